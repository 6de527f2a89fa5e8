#pragma once
// A document of results: what stands before the spectra, then an element for each as it comes, so that
// memory does not grow with their number.

#include <tool/commands/peaks/SpectrumWriter.h>
#include <string>
#include <vector>

namespace TslTool {

// What it holds of each spectrum.
enum class ResultContent { Header, Peaks, PeaksAndProfile };

class ResultWriter final : public SpectrumWriter {
 public:
  // `sections` are what the document says of the whole run: whole elements.
  ResultWriter(std::string sections, ResultContent content)
      : sections_(std::move(sections)), content_(content) {}

  // The chain stands in the document, too, where there are peaks.
  void Describe(const PeakOrigin& origin) override { chain_ = origin.chain; }
  std::string Head() const override;
  std::string PartOf(const LoadedSpectrum& loaded) const override;
  std::string Tail() const override { return "</Spectra>\n</Results>\n"; }

 private:
  std::string sections_;
  ResultContent content_;
  std::vector<TslBL::CurveEval> chain_;
};

}  // namespace TslTool
