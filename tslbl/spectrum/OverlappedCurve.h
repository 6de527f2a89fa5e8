#pragma once
// A curve some of whose detected peaks are merges of several, with the peaks that were fitted under
// them: how these are numbered, grouped, looked up and taken out.
//
// Peaks have three numberings:
//   data peak id      index in `peaks`
//   overlap peak id   index in `overlapPeaks`
//   spectrum peak id  data peaks first, then overlap peaks: an overlap peak's id plus the
//                     number of data peaks; the rows of CreateMZPeakTable
//
// Overlap peaks ascend by Position. Their groups are numbered 1, 2, 3 ... without a gap,
// and the peaks of a group stand together. A data peak's overlapGroup is the group of its
// overlap peaks, NoOverlapGroupId without any. The group operations below keep all that as
// far as their callers add groups that do not interlock; one that lands inside another
// splits it in two.

#include <tslbl/Export.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/records/OverlapPeakInfo.h>
#include <cstdint>
#include <vector>

namespace TslBL {

class TSLBL_API OverlappedCurve : public Curve {
 public:
  std::vector<OverlapPeakInfo> overlapPeaks;

  // --- Looking up overlap peaks

  std::uint32_t QNumGroups() const;
  std::uint32_t QNumOverlappedPeaks() const { return static_cast<std::uint32_t>(overlapPeaks.size()); }
  // The data peak that spans a point. False, and `peak` stays, if none does.
  bool QPeakIdxByCurveIdx(std::uint32_t curveIdx, std::uint32_t& peak) const;
  // The first overlap peak of a data peak. False, and `opd` is the number of overlap
  // peaks, if it has none.
  bool QOverlapPeakIdByMzPeak(std::uint32_t dataPeak, std::uint32_t& opd) const;
  // Overlap peak ids of a group.
  std::vector<std::uint32_t> QOverlapGroupPeakIds(std::uint32_t group) const;
  // Copies of a group's peaks: of the first run of them, should it be split.
  std::vector<OverlapPeakInfo> QOverlapPeakGroup(std::uint32_t group) const;

  // --- Converting peak ids. False leaves the result as it was.

  bool IsMzPkId(std::uint32_t peakId) const { return peakId < QNumPeaks(); }
  bool IsOpdPkId(std::uint32_t peakId) const {
    return !IsMzPkId(peakId) && peakId - QNumPeaks() < QNumOverlappedPeaks();
  }
  bool OpdPkIdToSpecPkId(std::uint32_t opd, std::uint32_t& peakId) const;
  bool SpecPkIdToOpdPkId(std::uint32_t peakId, std::uint32_t& opd) const;

  // --- Editing groups

  // Adds a group: as the last one if it lies right of all others, otherwise all groups are
  // numbered anew by position. `group` is sorted by Position, and its peaks receive the
  // number of a last group. An empty group changes nothing.
  void WOverlapPeakGroup(std::vector<OverlapPeakInfo>& group);
  // Removes the overlap peaks of the data peaks in an m/z range and, see below, of all
  // data peaks left of it. A data peak that only touches the range is not in it. Changes
  // nothing if no data peak is in the range.
  void ClearOverlapRange(double lowMZ, double highMZ);
  // Removes the overlap peaks of every data peak up to the last one of `dataPeaks`, which
  // ascends, listed or not. The peak table is not brought in step: see SyncOverlapGroups.
  void RemoveOverlapDataPeaks(const std::vector<std::uint32_t>& dataPeaks);
  // Numbers the groups 1, 2, 3 ... in the order in which they stand.
  void ReorderGroups();
  // Sets overlapGroup of every data peak from the overlap peaks; with several on one data
  // peak that of the last stays. An overlap peak of a data peak that is gone marks none.
  void SyncOverlapGroups();
  // Adds 1 to DataPeakId from `from` on, or subtracts 1: a data peak was inserted or taken
  // out there.
  void RenumberDataPeakIds(std::uint32_t from, bool increment);
};

}  // namespace TslBL
