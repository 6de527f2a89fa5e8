#include <tool/commands/info/ScanFacts.h>

#include <tool/io/JudgedRepresentation.h>
#include <algorithm>
#include <numeric>

namespace TslTool {

ScanFacts FactsOf(const Scan& scan) {
  constexpr std::size_t kLeastToJudge = 3;
  ScanFacts facts;
  facts.number = scan.number;
  facts.id = scan.id;
  facts.rtSeconds = scan.rtSeconds;
  facts.msLevel = scan.msLevel;
  facts.polarity = scan.polarity;
  facts.function = scan.function;
  facts.marked = scan.representation;
  facts.points = scan.amplitude.size();
  if (facts.points >= kLeastToJudge) facts.judged = JudgedRepresentation(scan);
  if (facts.points == 0) return facts;
  const auto highest = std::ranges::max_element(scan.amplitude);
  facts.mzFrom = scan.mz.front();
  facts.mzTo = scan.mz.back();
  facts.tic = std::accumulate(scan.amplitude.begin(), scan.amplitude.end(), 0.0);
  facts.basePeak = *highest;
  facts.basePeakMz = scan.mz[static_cast<std::size_t>(highest - scan.amplitude.begin())];
  facts.zeros = static_cast<std::uint64_t>(std::ranges::count(scan.amplitude, 0.0));
  return facts;
}

std::string NameOfRepresentation(Scan::Representation representation) {
  if (representation == Scan::Unknown) return "unknown";
  return representation == Scan::Profile ? "profile" : "centroid";
}

std::string NameOfPolarity(int polarity) {
  if (polarity == 0) return "unknown";
  return polarity > 0 ? "positive" : "negative";
}

}  // namespace TslTool
