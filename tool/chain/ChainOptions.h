#pragma once
// The switches of the default evaluation chain: filter, smooth, baseline, noise, threshold,
// peak detection.

#include <tool/chain/ChainDefaults.h>
#include <tool/chain/ChainPresets.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

class ChainOptions {
 public:
  explicit ChainOptions(ChainPresets presets = PresetsForSpectra());

  void Declare(Options& options);
  // For a command that looks for charge states itself: the file's chain may end with that.
  void TakeChargeStates() { takesChargeStates_ = true; }
  // The chain that the switches, or the file of --chain, ask for, with `defaults` where the user gives no
  // number; without charge states. Throws UsageError and InputError.
  std::vector<TslBL::CurveEval> Chain(const Options& options, const ChainDefaults& defaults) const;
  // What the file's chain ends with, if it is charge states. Throws InputError.
  std::optional<TslBL::ChargeStateParams> ChargeStates() const;
  // Whether any number is left to the defaults.
  bool NeedsDefaults() const;
  // Whether the chain smooths, and a constant on all amplitudes changes nothing but their level: it has no
  // level of its own.
  bool ToleratesOffset() const;
  // The switches that would give what `defaults` decide now, and why; empty if they decide nothing.
  std::string Derived(const ChainDefaults& defaults) const;
  // The range of m/z that the noise is to be measured on, if --noise names one. With fewer
  // than two points in it the library would take the whole spectrum for it.
  std::optional<RealRange> NoiseStretch() const;
  // The file that --chain names; empty without it.
  const std::string& File() const { return file_; }
  // The range that --range names, if it is given.
  std::optional<RealRange> SearchStretch() const;

 private:
  struct Switch;
  std::vector<Switch> Switches() const;

  ChainOptions With(const ChainDefaults& defaults) const;
  std::vector<TslBL::CurveEval> FromSwitches() const;
  TslBL::PeakDetectParams PeakSearch() const;

  ChainPresets presets_;
  std::string file_;
  bool takesChargeStates_ = false;
  bool aerosol_ = false;
  std::string smooth_ = "auto";
  std::string baseline_;
  bool subtractBaseline_ = false;
  std::string noise_;
  std::optional<double> threshold_;
  std::optional<std::uint32_t> sn_;
  std::optional<double> minRelAmpl_;
  std::optional<double> minArea_;
  std::optional<double> minRelArea_;
  std::optional<double> minWidth_;
  std::optional<double> maxWidth_;
  std::optional<std::uint32_t> maxPeaks_;
  std::optional<double> valley_;
  std::string position_;
  std::string range_;
  bool sorted_ = false;
};

}  // namespace TslTool
