#pragma once
// Areas of the peaks of a chromatogram, and how well the data determine them.
//
// An area is that of the measured points above the baseline, on straight lines between their times, so that
// neither smoothing nor uneven times change it; where the chain takes spikes, a baseline or a threshold off
// the amplitudes, that of the evaluated ones. Two things are settled beside each group of peaks that touch:
//
// Ends. A peak ends where the smoothed curve meets the baseline, or in a valley. What lies below the noise
// there still has some of the area: the outer ends of a group move out by half a width, and to 1.25 widths
// from the top at least, but not over more than a third of the way to the middle between two groups.
//
// Level. A baseline through a whole curve lies off the level beside one peak by little, and a peak is long.
// So the straight line through what two widths of points on both sides of the group have above the baseline,
// on the mean, is taken off, too; or a constant where there are points on one side only. Not where the user
// gave the baseline.
//
// Peaks that touch have what lies above the level together; it is divided at the valleys, or where a fit
// follows the points as that tells (FittedShares.h).
//
// The variance of an area is that of its points, from their counts where these are known, or else from the
// noise curve, without the part that grows with a peak; and that of the level.

#include <tool/chain/SmoothFilter.h>
#include <tool/commands/chrom/Chromatogram.h>
#include <tslbl/chromatogram/ICObj.h>
#include <cstddef>
#include <vector>

namespace TslTool {

struct PeakArea {
  double area = 0.0;
  double error = 0.0;     // standard error; NaN where it is not known
  std::size_t first = 0;  // points of its ends
  std::size_t last = 0;
};

// Of the rows of the peak table in their order. `curve` is `measured`, evaluated; `filter` that of its
// smoothing, null if it has none.
std::vector<PeakArea> PeakAreas(const Chromatogram& measured, const TslBL::ICObj& curve,
                                const SmoothFilter* filter);

// Between two points that the user chose, without a level.
PeakArea AreaBetween(const Chromatogram& measured, const TslBL::ICObj& curve, const SmoothFilter* filter,
                     std::size_t first, std::size_t last);

}  // namespace TslTool
