// Every record as bytes. The first byte picks the record; the rest is read as its bytes, in
// whatever version they claim. What is read must survive writing and reading to the bit, and
// have a dump and a document; what is refused must leave the record as it was.

#include <fuzz/AutoFindPrefs.h>
#include <fuzz/Records.h>
#include <fuzz/TuneRules.h>
#include <tslbl/calibrate/CalibrateParams.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/chromatogram/ICFilter.h>
#include <tslbl/chromatogram/ICObj.h>
#include <tslbl/chromatogram/ICPeak.h>
#include <tslbl/chromatogram/ICRange.h>
#include <tslbl/closed/common/ITslXML.h>
#include <tslbl/detect/ThreadingParams.h>
#include <tslbl/method/DDEvent.h>
#include <tslbl/method/Method.h>
#include <tslbl/records/CSSeries.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/records/OverlapPeakInfo.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/ramp/RampMethod.h>
#include <type_traits>

using namespace TslBL;
using namespace fuzz;

namespace {

class PlainCurve final : public Curve {
 public:
  PlainCurve* Clone() const override { return new PlainCurve(*this); }
};
bool operator==(const PlainCurve& a, const PlainCurve& b) {
  return frame::Equal(&frame::DescribeErased<Curve>, static_cast<const Curve*>(&a),
                      static_cast<const Curve*>(&b));
}

// Bytes may hold a state of the valve that has no text.
bool IsWithoutText(DiverterValveMethod program) {
  if (program.IsEmpty()) return false;
  auto entry = program.QFirstState();
  do {
    if (entry.second.State() >= DiverterValve::kUnknown) return true;
  } while (program.QNextState(entry));
  return false;
}
bool IsWithoutText(const Method& method) { return IsWithoutText(method.ValveMethod); }
template <class R>
bool IsWithoutText(const R&) {
  return false;
}

template <class R>
void Check(std::string_view bytes) {
  R record;
  const std::string before = ToBytes(record);
  if (!AcceptsBytes(bytes, record))
    return Require(ToBytes(record) == before, "a refused record stays as it was");
  const std::string written = ToBytes(record);
  R again;
  Require(AcceptsBytes(written, again), "what was written is read");
  Require(ToBytes(again) == written, "what was read is written the same");
  // A record with a NaN does not even equal its copy.
  Require((again == record) == (R(record) == record), "what was read equals what was written");
  if constexpr (std::is_base_of_v<TslCommon::ITslSerial, R>) {
    std::wstring dump;
    record.Serialize(dump);
  }
  if (IsWithoutText(record)) return;
  if constexpr (requires(TslCommon::XMLBuilder & builder) { record.Serialize(builder); })
    RequireDocumentSettles<R>(ToXml(record));
}

void CheckRules(std::string_view bytes) {
  Tune tune;
  if (AcceptsBytes(bytes, tune)) CheckTuneRules(tune);
}

struct Row {
  const char* name;
  void (*check)(std::string_view bytes);
};

// The corpus knows the rows by their numbers: new ones come last.
constexpr Row kRows[] = {
    {"AppThreadingParams", Check<AppThreadingParams>},
    {"BaselineParams", Check<BaselineParams>},
    {"CSSeries", Check<CSSeries>},
    {"CalibrateParams", Check<CalibrateParams>},
    {"Control", Check<Control>},
    {"Curve", Check<PlainCurve>},
    {"CurveEval", Check<CurveEval>},
    {"EvalThreadingParams", Check<EvalThreadingParams>},
    {"ICFilter", Check<ICFilter>},
    {"ICObj", Check<ICObj>},
    {"ICPeak", Check<ICPeak>},
    {"ICRange", Check<ICRange>},
    {"IOPoint", Check<IOPoint>},
    {"IonSource", Check<IonSource>},
    {"MZCalPt", Check<MZCalPt>},
    {"MZPeak", Check<MZPeak>},
    {"MZPeakField", Check<MZPeakField>},
    {"MZRange", Check<MZRange>},
    {"NoiseParams", Check<NoiseParams>},
    {"OPDParams", Check<OPDParams>},
    {"OverlapPeakInfo", Check<OverlapPeakInfo>},
    {"PeakDetectParams", Check<PeakDetectParams>},
    {"Q1CalPt", Check<Q1CalPt>},
    {"RawSpectrum", Check<RawSpectrum>},
    {"RawSpectrumInfo", Check<RawSpectrumInfo>},
    {"SmoothParams", Check<SmoothParams>},
    {"Spectrum", Check<Spectrum>},
    {"Syringe", Check<Syringe>},
    {"SyringeModel", Check<SyringeModel>},
    {"ThresholdParams", Check<ThresholdParams>},
    {"Tune", Check<Tune>},
    {"TuneInfo", Check<TuneInfo>},
    {"PeakInfo", Check<PeakInfo>},
    {"PLAutoFindPrefs", CheckPrefsBytes},
    {"Tune rules", CheckRules},
    {"AdductIonInfo", Check<AdductIonInfo>},
    {"AvgMoleculeInfo", Check<AvgMoleculeInfo>},
    {"ChargeStateParams", Check<ChargeStateParams>},
    {"ResolvedParams", Check<ResolvedParams>},
    {"UnresolvedParams", Check<UnresolvedParams>},
    {"CSSeriesPeakInfo", Check<CSSeriesPeakInfo>},
    {"CSSeriesInfo", Check<CSSeriesInfo>},
    {"DeconSpectrum", Check<DeconSpectrum>},
    {"DDEvent", Check<DDEvent>},
    {"DDFilter", Check<DDFilter>},
    {"DDInfo", Check<DDInfo>},
    {"DiverterValveMethod", Check<DiverterValveMethod>},
    {"Method", Check<Method>},
    {"TimePeriod", Check<TimePeriod>},
    {"TuneRun", Check<TuneRun>},
    {"RampAlgorithmParams", Check<RampAlgorithmParams>},
    {"RampLens", Check<RampLens>},
    {"RampMethod", Check<RampMethod>},
    {"RampStep", Check<RampStep>},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  kRows[input.Below(std::size(kRows))].check(input.Rest());
  return 0;
}
