#pragma once
// The switches of the usual evaluation chain: filter, smooth, baseline, noise, threshold,
// peak detection.

#include <cstdint>
#include <optional>
#include <string>
#include <tool/CommandLine.h>
#include <tslbl/curve/CurveEval.h>
#include <vector>

namespace TslTool {

class ChainOptions {
 public:
  void Declare(Options& options);
  // The chain that the switches, or the file of --chain, ask for. Throws UsageError and
  // InputError.
  std::vector<TslBL::CurveEval> Chain(const Options& options) const;

 private:
  std::vector<TslBL::CurveEval> FromSwitches() const;

  std::string file_;
  bool aerosol_ = false;
  std::string smooth_ = "mean:5";
  std::string baseline_ = "linear";
  bool subtractBaseline_ = false;
  std::string noise_ = "linear";
  std::optional<double> threshold_;
  std::optional<std::uint32_t> sn_;
  std::optional<double> minRelAmpl_;
  std::optional<double> minArea_;
  std::optional<double> minRelArea_;
  std::optional<double> minWidth_;
  std::optional<double> maxWidth_;
  std::optional<std::uint32_t> maxPeaks_;
  std::optional<double> valley_;
  std::string position_ = "centroid:25";
  std::string range_;
  bool sorted_ = false;
};

}  // namespace TslTool
