#include <cmath>
#include <functional>
#include <optional>
#include <vector>

#include <tune/rules/Rules.h>

// What every writer does: it takes the ends of its range, refuses their neighbours, marks
// the tune on a change only, and touches no other field.

namespace {

using namespace tests;

struct Writer {
  std::string name;
  std::function<ErrTypes(DevTuneRules&, double)> write;
  std::function<void(Tune&, double)> set;
  std::wstring label;
  double low;
  double high;
  std::optional<double> below;
  double above;
  std::vector<Probes::ProbeTypes> probes = {Probes::ESI, Probes::APCI, Probes::LowFlowESI};
  std::function<void(Tune&)> prepare = [](Tune&) {};
};

template <class Value>
constexpr bool kUnsigned = std::is_enum_v<Value> || std::is_unsigned_v<Value>;

template <class Value>
std::optional<double> Below(double low) {
  if (std::is_same_v<Value, double>) return std::nextafter(low, -HUGE_VAL);
  if (kUnsigned<Value> && low == 0.0) return std::nullopt;
  return low - 1;
}

template <class Value>
double Above(double high) {
  return std::is_same_v<Value, double> ? std::nextafter(high, HUGE_VAL) : high + 1;
}

template <class Part, class Value>
Writer Of(const char* name, ErrTypes (DevTuneRules::*write)(Value), Part Tune::*part, Value Part::*field,
          const wchar_t* label, double low, double high) {
  return {name,
          [=](DevTuneRules& rules, double value) { return (rules.*write)(static_cast<Value>(value)); },
          [=](Tune& tune, double value) { tune.*part.*field = static_cast<Value>(value); },
          label,
          low,
          high,
          Below<Value>(low),
          Above<Value>(high)};
}

Writer Source(const char* name, ErrTypes (DevTuneRules::*write)(std::int32_t), std::int32_t IonSource::*field,
              const wchar_t* label, double low, double high) {
  return Of(name, write, &Tune::Source, field, label, low, high);
}
Writer Source(const char* name, ErrTypes (DevTuneRules::*write)(std::uint32_t),
              std::uint32_t IonSource::*field, const wchar_t* label, double low, double high) {
  return Of(name, write, &Tune::Source, field, label, low, high);
}

IOPoint FullLens(double single) {
  IOPoint lens = SampleIOPoint();
  lens.Type = IOPoint::SingleType;
  lens.Single = single;
  return lens;
}

Writer Lens(const char* name, ErrTypes (DevTuneRules::*write)(const IOPoint&), IOPoint Control::*field,
            const std::wstring& label, double high, double low) {
  return {name,
          [=](DevTuneRules& rules, double value) { return (rules.*write)(FullLens(value)); },
          [=](Tune& tune, double value) { tune.ControlData.*field = FullLens(value); },
          label + L" - Single Value",
          low,
          high,
          Below<double>(low),
          Above<double>(high)};
}
Writer Lens(const char* name, ErrTypes (DevTuneRules::*write)(const IOPoint&), IOPoint Control::*field,
            const std::wstring& label, double high) {
  return Lens(name, write, field, label, high, -high);
}

Writer For(std::vector<Probes::ProbeTypes> probes, Writer writer) {
  writer.probes = std::move(probes);
  return writer;
}
Writer With(std::function<void(Tune&)> prepare, Writer writer) {
  writer.prepare = std::move(prepare);
  return writer;
}

const std::vector<Probes::ProbeTypes> kEsiKinds = {Probes::ESI, Probes::LowFlowESI};
const std::vector<Probes::ProbeTypes> kApci = {Probes::APCI};

void Positive(Tune& tune) { tune.ControlData.PolarityType = PolarityPositive; }
void Negative(Tune& tune) { tune.ControlData.PolarityType = PolarityNegative; }
void Sim(Tune& tune) {
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.0;
}

using R = DevTuneRules;
using S = IonSource;
using C = Control;

std::vector<Writer> SourceWriters() {
  return {
      For(kEsiKinds, Source("Cylinder", &R::WCylinder, &S::Cylinder, L"Cylinder Lens", -6000, 6000)),
      For(kApci, Source("Cylinder", &R::WCylinder, &S::Cylinder, L"Cylinder Lens", 0, 0)),
      For(kEsiKinds, Source("EndPlate", &R::WEndPlate, &S::EndPlate, L"Endplate", -6000, 6000)),
      For(kEsiKinds,
          With(Negative, Source("EndPlate", &R::WEndPlate, &S::EndPlate, L"Endplate", -6000, 6000))),
      For(kApci, With(Positive, Source("EndPlate", &R::WEndPlate, &S::EndPlate, L"Endplate", -5000, 0))),
      For(kApci, With(Negative, Source("EndPlate", &R::WEndPlate, &S::EndPlate, L"Endplate", 0, 5000))),
      For(kEsiKinds, Source("CapEnter", &R::WCapEnter, &S::CapEnter, L"Capillary Entrance", -6000, 6000)),
      For(kEsiKinds, With(Negative, Source("CapEnter", &R::WCapEnter, &S::CapEnter, L"Capillary Entrance",
                                           -6000, 6000))),
      For(kApci,
          With(Positive, Source("CapEnter", &R::WCapEnter, &S::CapEnter, L"Capillary Entrance", -5000, 0))),
      For(kApci,
          With(Negative, Source("CapEnter", &R::WCapEnter, &S::CapEnter, L"Capillary Entrance", 0, 5000))),
      For(kApci, With(Positive,
                      Source("CoronaVoltage", &R::WCoronaVoltage, &S::Cylinder, L"Corona Voltage", 0, 6000))),
      For(kApci, With(Negative, Source("CoronaVoltage", &R::WCoronaVoltage, &S::Cylinder, L"Corona Voltage",
                                       -6000, 0))),
      For(kEsiKinds, Source("CoronaVoltage", &R::WCoronaVoltage, &S::Cylinder, L"Corona Voltage", 0, 0)),
      Of("EndPlateTemp", &R::WEndPlateTemp, &Tune::Source, &S::EndPlateTemp, L"Endplate Temperature", 0, 3),
      Source("DryGasTemp", &R::WDryGasTemp, &S::DryGasTemp, L"Drying Gas Temp.", 25, 350),
      For(kApci, Source("ApciVapTemp", &R::WApciVapTemp, &S::ApciVapTemp, L"APCI Vaporizer Temp.", 25, 350)),
      Of("DryGasFlow", &R::WDryGasFlow, &Tune::Source, &S::DryGasFlow, L"Drying Gas Flow Rate", 2, 15),
      For(kEsiKinds,
          Source("Neb1GasPres", &R::WNeb1GasPres, &S::Neb1GasPres, L"Nebulizer 1 Gas Pressure", 0, 100)),
      For(kApci, Source("Neb1GasPres", &R::WNeb1GasPres, &S::Neb1GasPres, L"Nebulizer 1 Gas Pressure", 0, 0)),
      For(kApci, Source("ApciAuxGas", &R::WApciAuxGas, &S::Neb1GasPres, L"APCI Aux Gas Pressure", 0, 60)),
      For(kEsiKinds, Source("ApciAuxGas", &R::WApciAuxGas, &S::Neb1GasPres, L"APCI Aux Gas Pressure", 0, 0)),
      For(kApci, Of("CoronaCurrent", &R::WCoronaCurrent, &Tune::Source, &S::CoronaCurrent, L"Corona Current",
                    0, 20)),
      For(kEsiKinds,
          Of("CoronaCurrent", &R::WCoronaCurrent, &Tune::Source, &S::CoronaCurrent, L"Corona Current", 0, 0)),
  };
}

template <class Value>
Writer Path(const char* name, ErrTypes (DevTuneRules::*write)(Value), Value Control::*field,
            const wchar_t* label, double low, double high) {
  return Of(name, write, &Tune::ControlData, field, label, low, high);
}

std::vector<Writer> AcquisitionWriters() {
  return {
      Path("ControlType", &R::WControlType, &C::Type, L"Acquisition Function", 0, 1),
      With(Sim, Path("MZLow", &R::WMZLow, &C::MZLow, L"Low m/z", 5, 3000)),
      Path("MZStepSize", &R::WMZStepSize, &C::MZStepSize, L"Step Size", 0.05, 2995),
      Path("InitSettleDelay", &R::WInitSettleDelay, &C::InitSettleDelay, L"Initial Settling Delay", 0,
           5000000),
      Path("StepSettleDelay", &R::WStepSettleDelay, &C::StepSettleDelay, L"Step Settling Delay", 0, 4095),
      Path("PulseCountDelay", &R::WPulseCountDelay, &C::PulseCountDelay, L"Pulse Counting Delay", 25,
           2000000),
      With(Sim, Path("PulseCountDelay", &R::WPulseCountDelay, &C::PulseCountDelay, L"Pulse Counting Delay",
                     10, 2000000)),
      Path("ScansPerSpec", &R::WScansPerSpec, &C::ScansPerSpec, L"Scans Per Spectrum", 1, 65535),
  };
}

std::vector<Writer> IonPathWriters() {
  return {
      Lens("CapExit", &R::WCapExit, &C::CapExit, L"Capillary Exit", 400),
      Lens("Skimmer", &R::WSkimmer, &C::Skimmer, L"Skimmer", 100),
      Lens("Q0RFAmpl", &R::WQ0RFAmpl, &C::Q0RFAmpl, L"Q0 RF Amplitude", 800, 0),
      Lens("Q0Offset", &R::WQ0Offset, &C::Q0Offset, L"Q0 Offset", 30),
      Lens("Q0Exit1", &R::WQ0Exit1, &C::Q0Exit1, L"Q0 Exit Lens 1", 200),
      Lens("Q0Exit2", &R::WQ0Exit2, &C::Q0Exit2, L"Q0 Exit Lens 2", 200),
      Path("HEDynode", &R::WHEDynode, &C::HEDynode, L"High Energy Dynode", -10000, 10000),
      Path("DetectorGain", &R::WDetectorGain, &C::DetectorGain, L"Detector Gain", -3000, 0),
      Path("SignalThreshold", &R::WSignalThreshold, &C::SignalThreshold, L"Signal Threshold", 0, 255),
      Path("Q1MZType", &R::WQ1MZType, &C::Q1MZType, L"Q1 RF/DC or RF Only", 0, 1),
      Lens("Q1Resolution", &R::WQ1Resolution, &C::Q1Resolution, L"Q1 Resolution", 99),
      Lens("Q1CoarseResolution", &R::WQ1CoarseResolution, &C::Q1CoarseResolution, L"Q1 Coarse Resolution",
           99),
      Lens("Q1Offset", &R::WQ1Offset, &C::Q1Offset, L"Q1 Offset Voltage", 90),
      Lens("Q1IonGuide", &R::WQ1IonGuide, &C::Q1IonGuide, L"Q1 IonGuide", 100),
  };
}

// Every writer with a tune whose field stands at one end of its range.
void ForEach(const std::function<void(const Writer&, const DevTuneRules&, double end, double other)>& check) {
  for (const auto& writers : {SourceWriters(), AcquisitionWriters(), IonPathWriters()}) {
    for (const Writer& writer : writers) {
      for (const Probes::ProbeTypes probe : writer.probes) {
        for (const auto& [end, other] : {std::pair(writer.low, writer.high), {writer.high, writer.low}}) {
          SCOPED_TRACE(writer.name + " of probe " + std::to_string(probe) + " at " + std::to_string(end));
          Tune tune = Unmarked(probe);
          writer.prepare(tune);
          writer.set(tune, end);
          check(writer, DevTuneRules(tune), end, other);
        }
      }
    }
  }
}

TEST(EachWriter, TakesTheEndsOfItsRangeAndTouchesNoOtherField) {
  ForEach([](const Writer& writer, const DevTuneRules& rules, double, double other) {
    Tune expected = rules;
    writer.set(expected, other);
    ExpectAccepted(
        rules, [&](DevTuneRules& r) { return writer.write(r, other); }, expected);
  });
}

TEST(EachWriter, MarksNothingWhenNothingChanges) {
  ForEach([](const Writer& writer, const DevTuneRules& rules, double end, double) {
    ExpectAccepted(
        rules, [&](DevTuneRules& r) { return writer.write(r, end); }, rules);
  });
}

TEST(EachWriter, RefusesTheNeighboursOfItsRange) {
  ForEach([](const Writer& writer, const DevTuneRules& rules, double, double) {
    const std::wstring text = OutOfRange(writer.label, writer.low, writer.high);
    ExpectRefused(
        rules, [&](DevTuneRules& r) { return writer.write(r, writer.above); }, text);
    if (writer.below)
      ExpectRefused(
          rules, [&](DevTuneRules& r) { return writer.write(r, *writer.below); }, text);
  });
}

TEST(EachWriter, KeepsTheMarkOfAChangeBefore) {
  ForEach([](const Writer& writer, DevTuneRules rules, double end, double) {
    rules.WComment(L"changed");
    writer.write(rules, end);
    EXPECT_TRUE(rules.IsModified()) << "written the same";
    writer.write(rules, writer.above);
    EXPECT_TRUE(rules.IsModified()) << "refused";
  });
}

TEST(EachWriter, WritesAValueThatWasOutOfRange) {
  ForEach([](const Writer& writer, const DevTuneRules& rules, double, double other) {
    Tune bad = rules;
    writer.set(bad, writer.above);
    Tune expected = rules;
    writer.set(expected, other);
    ExpectAccepted(
        DevTuneRules(bad), [&](DevTuneRules& r) { return writer.write(r, other); }, expected);
  });
}

TEST(EachWriter, RefusesTheBadValueThatStandsInTheTune) {
  ForEach([](const Writer& writer, const DevTuneRules& rules, double, double) {
    Tune bad = rules;
    writer.set(bad, writer.above);
    ExpectRefused(
        DevTuneRules(bad), [&](DevTuneRules& r) { return writer.write(r, writer.above); },
        OutOfRange(writer.label, writer.low, writer.high));
  });
}

// Writers without a check.
struct FreeWriter {
  std::string name;
  std::function<ErrTypes(DevTuneRules&, bool first)> write;
  std::function<void(Tune&, bool first)> set;
};

template <class Argument, class Part, class Value>
FreeWriter Free(const char* name, ErrTypes (DevTuneRules::*write)(Argument), Part Tune::*part,
                Value Part::*field, Value first, Value second) {
  return {name, [=](DevTuneRules& rules, bool which) { return (rules.*write)(which ? first : second); },
          [=](Tune& tune, bool which) { tune.*part.*field = which ? first : second; }};
}
FreeWriter Switch(const char* name, ErrTypes (DevTuneRules::*write)(bool), bool IonSource::*field) {
  return Free(name, write, &Tune::Source, field, true, false);
}

std::vector<FreeWriter> FreeWriters() {
  return {
      Free("Name", &R::WName, &Tune::Info, &TuneInfo::Name, std::wstring(L"Day"), std::wstring()),
      Free("Comment", &R::WComment, &Tune::Info, &TuneInfo::Comment, std::wstring(L"cold"), std::wstring()),
      Free("LastSaved", &R::WLastSaved, &Tune::Info, &TuneInfo::LastSave, std::int64_t{-1},
           std::int64_t{1} << 40),
      Switch("Neb2GasOn", &R::WNeb2GasOn, &S::Neb2GasOn),
      Switch("CalValve2On", &R::WCalValve2On, &S::CalValve2On),
      Switch("CalSample1On", &R::WCalSample1On, &S::CalSample1On),
      Switch("CalSample2On", &R::WCalSample2On, &S::CalSample2On),
      Switch("CalValveOn", &R::WCalValveOn, &S::CalValveOn),
      Switch("ControlByCurrent", &R::WControlByCurrent, &S::ControlByCurrent),
      Free("Q1PolePolarity", &R::WQ1PolePolarity, &Tune::ControlData, &C::Q1PolePolarity, true, false),
  };
}

TEST(EachFreeWriter, WritesItsFieldAndMarksAChangeOnly) {
  for (const FreeWriter& writer : FreeWriters()) {
    for (const Probes::ProbeTypes probe : kProbes) {
      for (const bool first : {true, false}) {
        SCOPED_TRACE(writer.name + " of probe " + std::to_string(probe));
        Tune tune = Unmarked(probe);
        writer.set(tune, !first);
        Tune expected = tune;
        writer.set(expected, first);
        ExpectAccepted(
            DevTuneRules(tune), [&](DevTuneRules& r) { return writer.write(r, first); }, expected);
      }
    }
  }
}

}  // namespace
