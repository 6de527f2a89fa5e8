#include <tool/commands/simulate/SampleOptions.h>

#include <fmt/format.h>

#include <tool/simulate/ProteinText.h>
#include <algorithm>

namespace TslTool {
namespace {

constexpr double kMostBackground = 1e6;

struct NamedSample {
  const char* name;
  Sample (*make)();
};
constexpr NamedSample kSamples[] = {{"demo", DemonstrationSample}, {"calibrants", CalibrantSample}};

std::vector<std::string> SampleNames() {
  std::vector<std::string> names;
  for (const NamedSample& sample : kSamples) names.emplace_back(sample.name);
  return names;
}

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
  options.Choice("--sample NAME", sample_, SampleNames(),
                 "What is measured: the demonstration sample, or a tuning mix that is infused");
  options.Repeated(
      "--protein NAME=MASS[:CHARGES[:COUNTS]]", proteins_,
      fmt::format("Instead of such a sample, this protein: average mass in Da, range of "
                  "charges [the usual ones that are scanned], counts a point of the highest [{}]; "
                  "may be given several times",
                  kUsualProteinCounts));
  options.Value("--background X", background_,
                fmt::format("Counts a point that the background comes down to at high m/z [{}]",
                            Sample::kUsualBackground));
}

Sample SampleOptions::Get(const Instrument& instrument) const {
  if (!proteins_.empty() && sample_ != kSamples[0].name)
    throw UsageError("--protein: takes the place of a --sample, and both are given");
  Sample sample = proteins_.empty() ? std::ranges::find(kSamples, sample_, &NamedSample::name)->make()
                                    : Sample{ProteinsOf(proteins_, instrument)};
  sample.background = background_.value_or(sample.background);
  if (!(sample.background >= 0.0 && sample.background <= kMostBackground))
    throw UsageError(fmt::format("--background: {} is not from 0 to {}", sample.background, kMostBackground));
  return sample;
}

}  // namespace TslTool
