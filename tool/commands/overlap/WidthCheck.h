#pragma once
// Whether the chain looked for peaks as wide as those that were fitted.

#include <tool/io/SpectrumSource.h>
#include <cstdint>
#include <string>

namespace TslTool {

// Where most peaks of a file are merged they are taken for its peaks, and smoothing over their width hides
// weak parts and swings beside strong ones. The fits tell how wide peaks are. Of all spectra of a file; not
// for two threads at once.
class WidthCheck {
 public:
  // A deconvolved spectrum.
  void Add(const TslBL::Spectrum& spectrum);

  // Empty where the widths agree, or nothing is known.
  std::string Warning() const;

 private:
  std::uint64_t peaks_ = 0;
  double widths_ = 0.0;  // sums over the peaks, in points
  double windows_ = 0.0;
};

}  // namespace TslTool
