#include <tslbl/chargestate/CSDeconEdit.h>

#include <tslbl/chargestate/DeconRun.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/PeakRows.h>
#include <tslbl/chargestate/SeriesReply.h>
#include <tslbl/curve/RunForUser.h>

namespace TslBL {
namespace {

using PeakIds = std::vector<std::uint32_t>;

template <class Work>
bool Edit(DeconSpectrum& spectrum, std::wstring& error, Work work) {
  return RunForUser(
      [&] {
        if (!spectrum.CheckAllStatus(Curve::STATUS_CSDECON))
          throw std::runtime_error(
              "Charge State Deconvolution must be executed before the results can be editted.");
        DeconRun run{spectrum};
        work(run);
      },
      error);
}

CSSeriesInfo RequireSeries(const DeconSpectrum& spectrum, const CSSeries& series) {
  CSSeriesInfo info;
  if (!spectrum.QCSSeriesInfo(series, info))
    throw std::runtime_error("Invalid Charge State Deconvolution Series.");
  return info;
}

// Asks the engine of a type, which it sets up, about the series that has these peaks. Throws
// std::runtime_error with `failure` if there is no engine of that type.
std::wstring AskAbout(DeconRun& run, CSSeries::Types type, SeriesCall call, double avgMass,
                      const PeakIds& peakIds, const char* failure) {
  SetUpEngines(run, type == CSSeries::Resolved, type == CSSeries::Unresolved);
  if (!HasEngine(run, type)) throw std::runtime_error(failure);
  DeconXMLParser parser;
  parser.WMZPeaks(BuildPeakRows(run.spectrum));
  parser.WSeriesPeaks(avgMass, peakIds);
  return AskForSeries(run, type, call, parser.QText());
}

// The peaks by which a series is worked out anew.
PeakIds SeedsOf(const CSSeriesInfo& info) {
  PeakIds ids;
  for (const CSSeriesPeakInfo& peak : info.Peaks)
    if (info.Series.Type == CSSeries::Unresolved ||
        (info.Series.Type == CSSeries::Resolved && peak.IsMonoPeak))
      ids.push_back(peak.PeakId);
  return ids;
}

void Recalculate(DeconRun& run, const CSSeriesInfo& info, const PeakIds& peakIds) {
  const std::wstring reply = AskAbout(run, info.Series.Type, SeriesCall::Recalc, info.AvgMass, peakIds,
                                      "Unable to Recalculate Series information with current settings.");
  ReplaceSeriesBy(reply, info.Series, run.spectrum);
  DrawMassCurve(run);
}

void Delete(DeconRun& run, const std::vector<CSSeries>& series) {
  run.spectrum.CSDeleteSeries(series);
  SetUpEngines(run, false, false);
  DrawMassCurve(run);
}

}  // namespace

bool CSDeconAddSeries(DeconSpectrum& spectrum, CSSeries::Types type, const PeakIds& peakIds,
                      std::wstring& error) {
  return Edit(spectrum, error, [&](DeconRun& run) {
    if (type != CSSeries::Resolved && type != CSSeries::Unresolved)
      throw std::runtime_error("Invalid Charge State Deconvolution Series Type.");
    if (peakIds.empty()) throw std::runtime_error("No peaks specified for operation.");
    const std::wstring reply = AskAbout(run, type, SeriesCall::Find, 0.0, peakIds,
                                        "Unable to Find Series information with current settings.");
    AddSeriesOf(reply, type, spectrum);
    DrawMassCurve(run);
  });
}

bool CSDeconDeleteSeries(DeconSpectrum& spectrum, const std::vector<CSSeries>& series, std::wstring& error) {
  return Edit(spectrum, error, [&](DeconRun& run) {
    if (!series.empty()) Delete(run, series);
  });
}

bool CSDeconAddSeriesPeaks(DeconSpectrum& spectrum, const CSSeries& series, const PeakIds& peakIds,
                           std::wstring& error) {
  return Edit(spectrum, error, [&](DeconRun& run) {
    if (peakIds.empty()) return;
    const CSSeriesInfo info = RequireSeries(spectrum, series);
    PeakIds ids = SeedsOf(info);
    ids.insert(ids.end(), peakIds.begin(), peakIds.end());
    Recalculate(run, info, ids);
  });
}

bool CSDeconDeleteSeriesPeaks(DeconSpectrum& spectrum, const CSSeries& series, const PeakIds& peakIds,
                              std::wstring& error) {
  return Edit(spectrum, error, [&](DeconRun& run) {
    if (peakIds.empty()) return;
    CSSeriesInfo info = RequireSeries(spectrum, series);
    info.ErasePeaks(peakIds);
    if (DeconSpectrum::IsSeriesValid(info)) {
      Recalculate(run, info, SeedsOf(info));
    } else {
      Delete(run, {series});
    }
  });
}

}  // namespace TslBL
