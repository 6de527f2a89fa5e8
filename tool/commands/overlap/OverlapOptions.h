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
  // The parameters for a spectrum. Where the instrument does not count, amplitudes are in any unit, and
  // without --min-amplitude no estimate is dropped for a low one. Throws UsageError.
  TslBL::OPDParams Params(bool isCounted) const;

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
