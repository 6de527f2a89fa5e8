#pragma once
// What the lenses of a tune do to ions: how many of an m/z reach the detector, and how wide their lines are.
//
// A model that is simple enough to know the best value of every lens, so that what a ramp finds can be held
// against it. The lenses do not act on each other. With d = log10(m/z / 100), and voltages for positive ions
// (those that follow the polarity are turned for negative ones):
//
// - Each lens of BestValue lets exp(-((value - best) / spread)^2 / 2) of the ions through. Those of the
// source
//   count under an electrospray probe only; any other source is at its best.
// - Q1: a line is w = exp((25 - 30 d - Q1Resolution - Q1CoarseResolution) / 100) times as wide as the
// instrument's usual one,
//   and w / (w + 0.5) of the ions pass: what resolves better lets less through.
// - The detector sees 1 - exp(-|HEDynode| / 2500), of these 1 / (1 + exp((DetectorGain + 1300) / 60)), which
// saturates, and of
//   these exp(-SignalThreshold / 150).
//
// A lens that follows m/z has at each m/z the value of its curve. A value; any number of threads may ask.

#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/Tune.h>
#include <optional>
#include <vector>

namespace TslTool {

class LensModel {
 public:
  // Of an instrument that is at its best with every tune: all ions pass, and all lines have the usual width.
  LensModel() = default;
  explicit LensModel(const TslBL::Tune& tune);

  // From 0 to 1. Both throw as LensCurve::At does.
  double Transmission(double mz) const;
  // Of a line, as a multiple of the usual one.
  double Width(double mz) const;

  // The value at which a lens lets most ions through; nothing for a field that has none, such as those of
  // Q1's resolution and of the detector.
  static std::optional<double> BestValue(TslBL::TuneField::Id field, TslCommon::PolarityTypes polarity,
                                         double mz);

 private:
  struct Lens {
    TslBL::TuneField::Id field;
    TslBL::LensCurve curve;
  };
  struct Resolution {
    TslBL::LensCurve fine;
    TslBL::LensCurve coarse;
  };

  TslCommon::PolarityTypes polarity_ = TslCommon::PolarityPositive;
  double steady_ = 1.0;  // what passes the source and the detector, whatever the m/z
  std::vector<Lens> lenses_;
  std::optional<Resolution> resolution_;
};

}  // namespace TslTool
