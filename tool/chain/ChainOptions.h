#pragma once
// The switches of the default evaluation chain: filter, smooth, baseline, noise, threshold,
// peak detection.

#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

class ChainOptions {
 public:
  void Declare(Options& options);
  // The chain that the switches, or the file of --chain, ask for. `mzStep`, where known, is
  // the spacing of the points: the default smoothing follows the width of a line in points.
  // Throws UsageError and InputError.
  std::vector<TslBL::CurveEval> Chain(const Options& options, std::optional<double> mzStep) const;
  // The range of m/z that the noise is to be measured on, if --noise names one. With fewer
  // than two points in it the library would take the whole spectrum for it.
  std::optional<RealRange> NoiseStretch() const;
  // The file that --chain names; empty without it.
  const std::string& File() const { return file_; }
  // The range that --range names, if it is given.
  std::optional<RealRange> SearchStretch() const;

 private:
  struct Switch;
  static const std::vector<Switch>& Switches();

  std::vector<TslBL::CurveEval> FromSwitches(std::optional<double> mzStep) const;
  TslBL::PeakDetectParams PeakSearch() const;

  std::string file_;
  bool aerosol_ = false;
  std::string smooth_ = "auto";
  std::string baseline_ = "linear";
  bool subtractBaseline_ = false;
  std::string noise_ = "linear";
  std::optional<double> threshold_;
  std::optional<std::uint32_t> sn_ = 5;
  std::optional<double> minRelAmpl_;
  std::optional<double> minArea_;
  std::optional<double> minRelArea_;
  std::optional<double> minWidth_;
  std::optional<double> maxWidth_;
  std::optional<std::uint32_t> maxPeaks_;
  // Two equal lines of a quadrupole, 1 m/z apart and 0.6 wide, leave a valley of 29 % that
  // smoothing lifts: the library's 25 would take them for one.
  std::optional<double> valley_ = 50.0;
  std::string position_ = "centroid:25";
  std::string range_;
  bool sorted_ = false;
};

}  // namespace TslTool
