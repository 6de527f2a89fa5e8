#pragma once
// The switches of charge state deconvolution.

#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <tslbl/chargestate/ChargeStateParams.h>
#include <cstdint>
#include <optional>
#include <string>

namespace TslTool {

// Parameters as far as the user gives them.
struct DeconWishes {
  TslBL::ChargeStateParams params;
  // What the data decide where it is not given.
  bool hasAdduct = false;
  bool hasOverlap = false;
  bool hasMaxCharge = false;
  bool hasIsotopeAccuracy = false;
  bool hasChargeAccuracy = false;
  // Of resolved series as well, of which the parameters have no range.
  std::optional<RealRange> mass = {};
};

class DeconOptions {
 public:
  void Declare(Options& options);
  // Those of a chain, if it has charge states; they exclude the switches, which are among `options`. Throws
  // UsageError.
  DeconWishes Wishes(const Options& options, const std::optional<TslBL::ChargeStateParams>& ofChain) const;

 private:
  DeconWishes OfSwitches() const;
  void DeclareResolved(Options& options);
  void DeclareUnresolved(Options& options);
  void SetMethod(TslBL::ChargeStateParams& params) const;
  void SetPeaks(TslBL::ChargeStateParams& params) const;
  void SetResolved(TslBL::ResolvedParams& params) const;
  void SetUnresolved(DeconWishes& wishes) const;

  bool resolved_ = false;
  bool unresolved_ = false;
  bool both_ = false;
  std::string mass_;
  std::string range_;
  std::string adduct_;
  std::string maxGaps_;
  std::string maxSpecies_;
  std::string mzOf_ = "centroid";
  std::string intensity_ = "area";
  bool overlap_ = false;
  bool noOverlap_ = false;
  std::string maxCharge_;
  std::string isotopeAccuracy_;
  std::string chargeAccuracy_;
  std::optional<double> minScore_;
  std::string score_ = "deviations";
  std::string mono_ = "weighted";
  std::string molecule_ = "averagine";
  std::optional<double> atomThreshold_;
  std::optional<double> moleculeThreshold_;
  std::string isotopeGaps_;
  std::string resolution_;
  std::string isotopeSn_;
  std::string minCharges_;
  std::string seriesAccuracy_;
};

}  // namespace TslTool
