#include <tool/commands/decon/EditSeries.h>

#include <fmt/format.h>

#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::CSSeries;
using TslBL::DeconSpectrum;
using TslBL::MZPeak;
using PeakIds = std::vector<std::uint32_t>;

constexpr double kReach = 0.05;  // m/z

// Those that the search works on.
std::vector<MZPeak> PeaksOf(const DeconSpectrum& spectrum) {
  std::vector<MZPeak> peaks = TslBL::CreateMZPeakTable(spectrum);
  const bool withOverlap = spectrum.CSParams.UseOPD;
  std::erase_if(peaks, [&](const MZPeak& peak) {
    return withOverlap ? peak.IsOverlapped : peak.Kind == MZPeak::OverlapPeak;
  });
  return peaks;
}

std::uint32_t PeakAt(const std::vector<MZPeak>& peaks, double mz) {
  const auto distance = [&](const MZPeak& peak) { return std::abs(peak.Mass - mz); };
  const auto nearest = std::ranges::min_element(peaks, {}, distance);
  if (nearest == peaks.end()) throw std::runtime_error("the spectrum has no peaks");
  if (distance(*nearest) > std::max(kReach, nearest->Width))
    throw std::runtime_error(
        fmt::format("there is no peak at m/z {}; the nearest is at {:.4f}", mz, nearest->Mass));
  return nearest->PeakId;
}

PeakIds PeaksAt(const DeconSpectrum& spectrum, const std::vector<double>& mzs) {
  const std::vector<MZPeak> peaks = PeaksOf(spectrum);
  PeakIds ids;
  for (const double mz : mzs) ids.push_back(PeakAt(peaks, mz));
  return ids;
}

CSSeries SeriesOf(const DeconSpectrum& spectrum, const std::string& label) {
  CSSeries series = DeconSpectrum::CSSeriesLabelToObj(TslCommon::FromUtf8(label));
  std::uint32_t index = 0;
  if (!spectrum.QCSSeriesIndex(series, index)) throw std::runtime_error("there is no such series");
  return series;
}

void RequireMembers(const DeconSpectrum& spectrum, const CSSeries& series, const PeakIds& ids,
                    const SeriesEdit& edit) {
  const auto members = spectrum.QCSSeriesPeakInfoArray(series);
  for (std::size_t i = 0; i < ids.size(); ++i)
    if (std::ranges::find(members, ids[i], &TslBL::CSSeriesPeakInfo::PeakId) == members.end())
      throw std::runtime_error(fmt::format("the peak at m/z {} is not in it", edit.mz[i]));
}

void RequireNoMembers(const DeconSpectrum& spectrum, const CSSeries& series, const PeakIds& ids,
                      const SeriesEdit& edit) {
  const auto members = spectrum.QCSSeriesPeakInfoArray(series);
  for (std::size_t i = 0; i < ids.size(); ++i)
    if (std::ranges::find(members, ids[i], &TslBL::CSSeriesPeakInfo::PeakId) != members.end())
      throw std::runtime_error(fmt::format("the peak at m/z {} is in it already", edit.mz[i]));
}

// The library finds the same molecule as often as it is asked for.
void RequireNew(const DeconSpectrum& spectrum) {
  const auto peaksOf = [](const TslBL::CSSeriesInfo& series) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> peaks;
    for (const TslBL::CSSeriesPeakInfo& peak : series.Peaks) peaks.emplace_back(peak.PeakId, peak.Charge);
    std::ranges::sort(peaks);
    return peaks;
  };
  const TslBL::CSSeriesInfo& added = spectrum.Series.back();
  for (const TslBL::CSSeriesInfo& series : spectrum.Series)
    if (&series != &added && series.Series.Type == added.Series.Type && peaksOf(series) == peaksOf(added))
      throw std::runtime_error(
          fmt::format("these peaks make series {}, which there is already",
                      TslCommon::ToUtf8(DeconSpectrum::CSSeriesObjToLabel(series.Series))));
}

bool Make(DeconSpectrum& spectrum, const SeriesEdit& edit, std::wstring& error) {
  if (edit.kind == SeriesEdit::AddSeries) {
    const CSSeries::Types type = edit.series == "resolved" ? CSSeries::Resolved : CSSeries::Unresolved;
    const std::size_t before = spectrum.Series.size();
    const bool isDone = TslBL::CSDeconAddSeries(spectrum, type, PeaksAt(spectrum, edit.mz), error);
    // The library drops one that is too small without a word.
    if (isDone && spectrum.Series.size() == before)
      throw std::runtime_error("these peaks make none; an unresolved series has two peaks or more");
    if (isDone) RequireNew(spectrum);
    return isDone;
  }
  const CSSeries series = SeriesOf(spectrum, edit.series);
  if (edit.kind == SeriesEdit::RemoveSeries) return TslBL::CSDeconDeleteSeries(spectrum, {series}, error);
  const PeakIds ids = PeaksAt(spectrum, edit.mz);
  if (edit.kind == SeriesEdit::AddPeaks) {
    RequireNoMembers(spectrum, series, ids, edit);
    return TslBL::CSDeconAddSeriesPeaks(spectrum, series, ids, error);
  }
  RequireMembers(spectrum, series, ids, edit);
  return TslBL::CSDeconDeleteSeriesPeaks(spectrum, series, ids, error);
}

std::string NameOf(const SeriesEdit& edit) {
  switch (edit.kind) {
    case SeriesEdit::AddSeries:
      return fmt::format("the {} series cannot be added", edit.series);
    case SeriesEdit::RemoveSeries:
      return fmt::format("series {} cannot be removed", edit.series);
    case SeriesEdit::AddPeaks:
      return fmt::format("peaks cannot be added to series {}", edit.series);
    default:
      return fmt::format("peaks cannot be removed from series {}", edit.series);
  }
}

// The library takes it for a failure that no series is left, which is what the user wants here.
bool HasRemovedAll(const DeconSpectrum& spectrum, const SeriesEdit& edit) {
  const bool removes = edit.kind == SeriesEdit::RemoveSeries || edit.kind == SeriesEdit::RemovePeaks;
  return removes && spectrum.Series.empty();
}

}  // namespace

void EditSeries(DeconSpectrum& spectrum, const SeriesEdit& edit) {
  std::wstring error;
  try {
    if (!Make(spectrum, edit, error) && !HasRemovedAll(spectrum, edit))
      throw std::runtime_error(TslCommon::ToUtf8(error));
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error(NameOf(edit) + ": " + failure.what());
  }
}

}  // namespace TslTool
