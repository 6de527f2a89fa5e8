#pragma once
// A curve whose x axis is m/z. It remembers how that axis was made, so that the axis can be
// made anew when the calibration changes, and holds the peaks that were fitted under its
// detected ones.
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
//
// A value, copied deep; one thread at a time may change it.

#include <tslbl/Export.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/records/OverlapPeakInfo.h>
#include <tslbl/tune/MZCalPt.h>
#include <cstdint>
#include <vector>

namespace TslBL {

class TSLBL_API Spectrum : public Curve {
 public:
  std::uint32_t tuneId = 0;              // the tune that acquired it
  std::vector<MZCalPt> tuneMZCalPts;     // that tune's calibration, which defines the DAC scale
  std::vector<MZCalPt> appliedMZCalPts;  // the calibration that made the present x axis
  double startMDAC = 0.0;                // mass DAC value of the first point, a whole number
  double stepMDAC = 0.0;                 // from point to point, a whole number
  double timeStamp = 0.0;                // retention time, milliseconds
  double tic = 0.0;                      // total ion current
  OPDParams opdParams;
  std::vector<OverlapPeakInfo> overlapPeaks;

  // The evaluation parameters are the presets for mass spectra; those of the threshold have
  // none and keep their defaults.
  Spectrum();

  Curve* Clone() const override;

  // Version 1. A failed reading leaves the spectrum as it was.
  using Curve::Serialize;
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;

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

  friend TSLBL_API bool operator==(const Spectrum& a, const Spectrum& b);

 private:
  // Reads what stands behind the version word.
  virtual void ReadVerCur(BinaryReader& reader);
};

// The fields of a spectrum, those of Curve included.
TSLBL_API void Describe(Archive& ar, Spectrum& spectrum);

}  // namespace TslBL
