#include <tool/commands/simulate/SampleOptions.h>

#include <fmt/format.h>

#include <tool/simulate/ProteinText.h>
#include <algorithm>

namespace TslTool {
namespace {

constexpr double kMostBackground = 1e6;

std::vector<Compound> ProteinsOf(const std::vector<std::string>& texts, const Instrument& instrument) {
  std::vector<Compound> proteins;
  for (const std::string& text : texts) {
    Compound protein = ParseProtein(text, instrument);
    // The truth tells them apart by their names.
    if (std::ranges::find(proteins, protein.name, &Compound::name) != proteins.end())
      throw UsageError(fmt::format("--protein: \"{}\": there is another {}", text, protein.name));
    proteins.push_back(std::move(protein));
  }
  return proteins;
}

}  // namespace

void SampleOptions::Declare(Options& options) {
  options.Repeated(
      "--protein NAME=MASS[:CHARGES[:COUNTS]]", proteins_,
      fmt::format("Instead of the demonstration sample, this protein: average mass in Da, range of "
                  "charges [the usual ones that are scanned], counts a point of the highest [{}]; "
                  "may be given several times",
                  kUsualProteinCounts));
  options.Value("--background X", background_,
                fmt::format("Counts a point that the background comes down to at high m/z [{}]",
                            Sample::kUsualBackground));
}

Sample SampleOptions::Get(const Instrument& instrument) const {
  Sample sample = proteins_.empty() ? DemonstrationSample() : Sample{ProteinsOf(proteins_, instrument)};
  sample.background = background_.value_or(sample.background);
  if (!(sample.background >= 0.0 && sample.background <= kMostBackground))
    throw UsageError(fmt::format("--background: {} is not from 0 to {}", sample.background, kMostBackground));
  return sample;
}

}  // namespace TslTool
