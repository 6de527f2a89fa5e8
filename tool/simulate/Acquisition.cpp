#include <tool/simulate/Acquisition.h>

#include <tool/simulate/CountIons.h>

namespace TslTool {

Acquisition::Acquisition(const TslBL::MethodRules& rules, const Sample& sample, double width,
                         std::uint64_t seed)
    : tunes_(rules.Tunes), sample_(sample), width_(width), seed_(seed), program_(rules) {}

const ExpectedCounts& Acquisition::ExpectedOf(const ProgrammedSpectrum& spectrum) {
  if (spectrum.period != period_) expected_.clear();
  period_ = spectrum.period;
  const auto known = expected_.find(spectrum.tuneId);
  if (known != expected_.end()) return known->second;
  const TslBL::Tune& tune = tunes_.at(spectrum.tuneId);
  return expected_.try_emplace(spectrum.tuneId, sample_, tune, width_, LensModel(tune)).first->second;
}

bool Acquisition::Next(TslBL::RawSpectrum& raw, std::vector<TrueLine>& truth) {
  auto spectrum = program_.Next();
  while (spectrum && !spectrum->isSaved) spectrum = program_.Next();
  if (!spectrum) return false;
  const ExpectedCounts& expected = ExpectedOf(*spectrum);
  const bool isSeen = !spectrum->isToWaste;
  raw = CountIons(isSeen ? expected.At(spectrum->fraction) : expected.OfBackground(), seed_, spectrum->index);
  raw.info.Id = spectrum->index + 1;
  raw.info.TuneId = spectrum->tuneId;
  raw.info.TimeStamp = spectrum->milliseconds;
  truth = isSeen ? expected.Truth(spectrum->fraction) : std::vector<TrueLine>();
  return true;
}

}  // namespace TslTool
