#include <tslbl/tune/IonSource.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kTempLevels[] = {{IonSource::Off, L"Off"},
                                    {IonSource::Low, L"Low"},
                                    {IonSource::Medium, L"Medium"},
                                    {IonSource::High, L"High"}};
constexpr Codes kProbes{
    .toText = [](std::uint32_t probe) { return Probes::GetName(static_cast<Probes::ProbeTypes>(probe)); },
    .fromText = [](const std::wstring& text) -> std::uint32_t { return Probes::GetId(text); }};

// A place that the two kinds of probe name each in its own way.
struct SharedTag {
  const wchar_t* esi;
  const wchar_t* apci;

  template <class T>
  void operator()(Archive& ar, const IonSource& source, T& value) const {
    if (ar.Reading() && ar.Xml()) {
      ar(esi, value);
      ar(apci, value);
    } else {
      ar(source.Type == Probes::APCI ? apci : esi, value);
    }
  }
};

constexpr SharedTag kCylinder{L"Cylinder", L"Corona"};
constexpr SharedTag kNeb1GasPres{L"Neb1GasPres", L"ApciAuxGas"};
constexpr SharedTag kCalValveOn{L"CalValveOn", L"ApciNebGas"};

// A document of an ESI tune does not mention the corona.
bool HasCorona(const Archive& ar, const IonSource& source) {
  const bool written = ar.Xml() && !ar.Reading();
  return ar.Since(3) && (!written || source.Type == Probes::APCI);
}

}  // namespace

void Describe(Archive& ar, IonSource& source) {
  ar.Version(3, "Unknown IonSource version.");
  if (const auto element = ar.Element(L"Source")) {
    ar.Enum(L"Type", source.Type, kProbes);
    kCylinder(ar, source, source.Cylinder);
    ar(L"EndPlate", source.EndPlate);
    ar(L"CapEnter", source.CapEnter);
    ar.Enum(L"EndPlateTemp", source.EndPlateTemp, {.rows = kTempLevels, .exact = true});
    ar(L"DryGasTemp", source.DryGasTemp);
    ar(L"ApciVapTemp", source.ApciVapTemp);
    ar(L"DryGasFlow", source.DryGasFlow);
    kNeb1GasPres(ar, source, source.Neb1GasPres);
    // The first sources had one calibrant valve, the corona came last.
    if (ar.Since(2)) {
      ar(L"Neb2GasOn", source.Neb2GasOn);
      ar(L"CalValve2On", source.CalValve2On);
      ar(L"CalSample1On", source.CalSample1On);
      ar(L"CalSample2On", source.CalSample2On);
    }
    kCalValveOn(ar, source, source.CalValveOn);
    if (HasCorona(ar, source)) {
      ar(L"ControlByCurrent", source.ControlByCurrent);
      ar(L"CoronaCurrent", source.CoronaCurrent);
    }
  }
}

}  // namespace TslBL
