#include <tool/commands/peaks/RefuseNothing.h>

#include <fmt/format.h>

#include <tool/commands/peaks/ScansInstead.h>
#include <tool/frame/InputError.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>

namespace TslTool {
namespace {

// As in "; 2 chromatograms of 400 points in all".
std::string BesideSpectra(const SpectrumSource& source) {
  std::string text;
  if (const auto& [count, points] = source.PassedOver(); count > 0)
    text += fmt::format("; {} chromatogram{} of {} points in all", count, count == 1 ? "" : "s", points);
  for (const std::string& odd : source.Warnings()) text += "; " + odd;
  return text;
}

}  // namespace

bool CanBeOpenedAgain(const std::string& input) { return input.empty() || CanBeReadAgain(input); }

void RefuseNothing(const std::string& input, const SpectrumChoice& wanted, const SpectrumSource& source) {
  const bool all = wanted.filter.WantsAll();
  std::string reason = all ? "holds no spectrum" : "holds no spectrum that was asked for";
  if (CanBeOpenedAgain(input)) reason += ScansInstead(input, wanted);
  if (const std::string skipped = source.Skipped(); !skipped.empty())
    reason = fmt::format("holds no spectrum to evaluate: {}", skipped);
  reason += BesideSpectra(source);
  if (source.SkippedCentroids())
    reason += "; centroid data are peaks already; --profile is for profiles that are not known as such";
  throw InputError(InputName(input), "", reason);
}

}  // namespace TslTool
