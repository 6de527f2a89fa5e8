#include <tslbl/chargestate/CSDecon.h>

#include <tslbl/chargestate/DeconRun.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/PeakRows.h>
#include <tslbl/chargestate/SeriesReply.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/curve/RunForUser.h>
#include <tslbl/curve/Step.h>

namespace TslBL {
namespace {

void FindSeries(DeconRun& run, const std::wstring& peaks) {
  const ChargeStateParams::Methods method = run.spectrum.CSParams.Method;
  const bool all = method == ChargeStateParams::ResAndUnres;
  const bool wantResolved = all || method == ChargeStateParams::ResolvedOnly;
  const bool wantUnresolved = all || method == ChargeStateParams::UnresolvedOnly;
  SetUpEngines(run, wantResolved, wantUnresolved);
  const auto find = [&](CSSeries::Types type) {
    AddSeriesOf(AskForSeries(run, type, SeriesCall::Auto, peaks), type, run.spectrum);
  };
  if (wantResolved) find(CSSeries::Resolved);
  if (wantUnresolved) find(CSSeries::Unresolved);
}

void Deconvolve(DeconSpectrum& spectrum) {
  spectrum.CSSeriesClear();
  const std::vector<PeakRow> rows = BuildPeakRows(spectrum);
  if (rows.empty()) ThrowMessage(kNoPeaksDetected);
  DeconXMLParser parser;
  parser.WMZPeaks(rows);
  DeconRun run{spectrum};
  FindSeries(run, parser.QText());
  DrawMassCurve(run);
}

}  // namespace

bool DoCSDecon(DeconSpectrum& spectrum, Changed& changed, std::wstring& error) {
  if (!spectrum.CheckAllStatus(Curve::STATUS_PEAKS)) {
    error = L"Peak Detect must be executed before Charge State Deconvolution can be executed.";
    return false;
  }
  return RunForUser(
      [&] {
        HistoryEntry entry(spectrum, CurveEval(spectrum.CSParams));
        Deconvolve(spectrum);
        entry.Keep();
        changed.chargeState = true;
        spectrum.AddStatus(Curve::STATUS_CSDECON);
      },
      error);
}

bool ExecuteCSDecon(DeconSpectrum& spectrum, Changed& changed, std::wstring& error) {
  const bool hasPeaks = spectrum.CheckAllStatus(Curve::STATUS_PEAKS);
  if (!hasPeaks && (!ExecutePeakDetect(spectrum, changed, error) || !changed.peaks)) return false;
  return DoCSDecon(spectrum, changed, error);
}

}  // namespace TslBL
