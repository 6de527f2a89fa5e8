#include <tool/commands/overlap/EditGroups.h>

#include <fmt/format.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/overlap/OPDRefit.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;
using TslBL::Spectrum;
using Group = std::vector<OverlapPeakInfo>;

constexpr double kReach = 0.25;      // m/z, as far as peaks of one group may stand apart
constexpr double kSamePlace = 0.25;  // FWHM

std::vector<Group> GroupsBut(const Spectrum& spectrum, std::uint32_t edited) {
  std::vector<Group> groups;
  for (std::uint32_t group = 1; group <= spectrum.QNumGroups(); ++group)
    if (group != edited) groups.push_back(spectrum.QOverlapPeakGroup(group));
  return groups;
}

// The row that was inserted, if there is one more than before.
std::uint32_t InsertedRow(const std::vector<TslBL::PeakInfo>& before,
                          const std::vector<TslBL::PeakInfo>& now) {
  if (now.size() == before.size()) return std::numeric_limits<std::uint32_t>::max();
  const auto [was, is] =
      std::ranges::mismatch(before, now, {}, &TslBL::PeakInfo::apexIdx, &TslBL::PeakInfo::apexIdx);
  return static_cast<std::uint32_t>(is - now.begin());
}

bool Holds(const Spectrum& spectrum, const OverlapPeakInfo& peak) {
  return std::ranges::any_of(spectrum.overlapPeaks, [&](const OverlapPeakInfo& each) {
    return each.DataPeakId == peak.DataPeakId && each.Position == peak.Position;
  });
}

void PutBack(Spectrum& spectrum, std::vector<Group>& groups, std::uint32_t inserted) {
  for (Group& group : groups) {
    for (OverlapPeakInfo& peak : group)
      if (peak.DataPeakId >= inserted) ++peak.DataPeakId;
    if (!Holds(spectrum, group.front())) spectrum.WOverlapPeakGroup(group);
  }
}

// Runs `edit(error)` on a group and keeps all others.
template <class Edit>
void KeepingOthers(Spectrum& spectrum, std::uint32_t group, Edit edit) {
  std::vector<Group> others = GroupsBut(spectrum, group);
  const std::vector<TslBL::PeakInfo> before = spectrum.peaks;
  std::wstring error;
  if (!edit(error)) throw std::runtime_error(TslCommon::ToUtf8(error));
  PutBack(spectrum, others, InsertedRow(before, spectrum.peaks));
}

struct Span {
  double low;
  double high;

  double DistanceTo(const Span& other) const { return std::max({0.0, low - other.high, other.low - high}); }
};

Span SpanOf(const Spectrum& spectrum, std::uint32_t row) {
  const TslBL::PeakInfo& peak = spectrum.peaks.at(row);
  return {spectrum.xAxis.at(peak.startIdx), spectrum.xAxis.at(peak.endIdx)};
}

// Of the data peak there, or the place itself.
Span SpanAt(const Spectrum& spectrum, double mz) {
  std::uint32_t row = 0;
  const std::uint32_t point = spectrum.QXAxisToIdx(mz, TslBL::ROUND_UP);
  return spectrum.QPeakIdxByCurveIdx(point, row) ? SpanOf(spectrum, row) : Span{mz, mz};
}

// The group of the nearest fitted peak's data peak; 0 if none is near.
std::uint32_t GroupNear(const Spectrum& spectrum, double mz) {
  const Span place = SpanAt(spectrum, mz);
  const auto distance = [&](const OverlapPeakInfo& peak) {
    return SpanOf(spectrum, peak.DataPeakId).DistanceTo(place);
  };
  const auto nearest = std::ranges::min_element(spectrum.overlapPeaks, {}, distance);
  const bool isNear = nearest != spectrum.overlapPeaks.end() && distance(*nearest) <= kReach;
  return isNear ? nearest->GroupId : 0;
}

double MzAt(const Spectrum& spectrum, double position) {
  return spectrum.FractionalIndexToXAxisVal(position);
}

std::uint32_t FittedPeakAt(const Spectrum& spectrum, double mz) {
  const auto distance = [&](const OverlapPeakInfo& peak) {
    return std::abs(MzAt(spectrum, peak.Position) - mz);
  };
  const auto nearest = std::ranges::min_element(spectrum.overlapPeaks, {}, distance);
  if (nearest == spectrum.overlapPeaks.end()) throw std::runtime_error("the spectrum has no fitted peak");
  const double reach =
      MzAt(spectrum, nearest->Position + nearest->FWHM / 2) - MzAt(spectrum, nearest->Position);
  if (distance(*nearest) > reach)
    throw std::runtime_error(
        fmt::format("there is no fitted peak; the nearest is at {:.4f}", MzAt(spectrum, nearest->Position)));
  return static_cast<std::uint32_t>(nearest - spectrum.overlapPeaks.begin());
}

// A second peak in one place would take nothing from the first, or all.
void RequireNewPlace(const Spectrum& spectrum, std::uint32_t group, double mz) {
  std::uint32_t row = 0;
  if (!spectrum.QPeakIdxByCurveIdx(spectrum.QXAxisToIdx(mz, TslBL::ROUND_UP), row)) return;
  for (const OverlapPeakInfo& fit : spectrum.QOverlapPeakGroup(group))
    if (std::abs(fit.Position - spectrum.peaks[row].centroidIdx) < kSamePlace * std::abs(fit.FWHM))
      throw std::runtime_error(
          fmt::format("the group has a fitted peak there, at m/z {:.4f}", MzAt(spectrum, fit.Position)));
}

void AddTo(Spectrum& spectrum, double mz) {
  std::uint32_t group = GroupNear(spectrum, mz);
  RequireNewPlace(spectrum, group, mz);
  KeepingOthers(spectrum, group, [&](std::wstring& error) {
    return TslBL::OPDRefitGroupAdd(spectrum.opdParams, spectrum, group, mz, error);
  });
}

void RemoveFrom(Spectrum& spectrum, double mz) {
  const std::uint32_t peak = FittedPeakAt(spectrum, mz);
  std::uint32_t group = spectrum.overlapPeaks[peak].GroupId;
  KeepingOthers(spectrum, group, [&](std::wstring& error) {
    return TslBL::OPDRefitGroupRemove(spectrum.opdParams, spectrum, group, {peak}, error);
  });
}

}  // namespace

void EditGroup(Spectrum& spectrum, const GroupEdit& edit) {
  const bool isAdded = edit.kind == GroupEdit::Add;
  try {
    isAdded ? AddTo(spectrum, edit.mz) : RemoveFrom(spectrum, edit.mz);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(
        fmt::format("m/z {} cannot be {}: {}", edit.mz, isAdded ? "added" : "removed", error.what()));
  }
}

}  // namespace TslTool
