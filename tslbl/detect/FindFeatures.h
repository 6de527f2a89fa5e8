#pragma once
// The Sequential route of peak detection: one sweep of the curve from left to right that
// finds every feature, the raw candidate of a peak with start, apex and end.
//
// The sweep can be split over threads, at points where the curve rises from the baseline:
// the features on both sides then do not know of each other, and those of the whole are
// those of the parts, to the bit. A finder reads the curve and writes its own features.

#include <tslbl/detect/PeakWalks.h>
#include <cstddef>
#include <vector>

namespace TslBL {

class RejectionBound;

// Points of the curve: first, apex, last.
struct PeakFeature {
  std::ptrdiff_t start = 0;
  std::ptrdiff_t apex = 0;
  std::ptrdiff_t end = 0;

  bool operator==(const PeakFeature&) const = default;
};

class FindFeatures {
 public:
  // `curve` is the searched stretch, which must outlive the finder; a peak ends where a
  // valley falls below maxValley percent of its height.
  // With `bound` features that it rejects are left out, as far as that changes nothing for others.
  FindFeatures(const CurveView& curve, double maxValley, const RejectionBound* bound = nullptr)
      : curve_(curve), maxValley_(maxValley), bound_(bound) {}

  // An empty finder for another part of the same curve.
  FindFeatures NewForPart() const { return {curve_, maxValley_, bound_}; }

  // Sweeps the points from begin up to, not including, end. Either is an end of the curve
  // or a point where it rises from the baseline. Parts follow each other without a gap.
  // Cost: linear in the points, times the logarithm of their number at worst.
  void Sweep(std::ptrdiff_t begin, std::ptrdiff_t end);

  // Takes over what was found in the part to the right.
  void Join(const FindFeatures& right);

  // The features of all parts, ascending, once overlaps are resolved: the taller one of
  // two keeps its span, the shorter one is cut, or dropped if even its apex lies inside.
  std::vector<PeakFeature> Settled() const;

 private:
  CurveView curve_;
  double maxValley_;
  const RejectionBound* bound_;
  std::vector<PeakFeature> features_;
};

}  // namespace TslBL
