#pragma once
// The switches of overlap peak deconvolution.

#include <tool/frame/Options.h>
#include <tslbl/records/OPDParams.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

class OverlapOptions {
 public:
  void Declare(Options& options);
  // The parameters for a spectrum. Without --min-amplitude estimates below 10 counts a second are dropped
  // where the instrument counts (`isCounted`), and none elsewhere, where amplitudes are in any unit. Without
  // --estimate-points half of `window` counts, the points of the chain's filter, and 3 at least. Throws
  // UsageError.
  TslBL::OPDParams Params(bool isCounted, std::uint32_t window) const;

 private:
  std::vector<std::string> ranges_;
  std::optional<double> commonEnd_;
  std::optional<std::uint32_t> resolution_;
  std::optional<double> shift_;
  std::optional<std::uint32_t> smoothPoints_;
  std::optional<std::uint32_t> minAmplitude_;
  std::optional<std::uint32_t> groupPeaks_;
  std::string method_ = "marquardt";
  bool isSingleGroup_ = false;
};

}  // namespace TslTool
