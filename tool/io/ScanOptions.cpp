#include <tool/io/ScanOptions.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>

namespace TslTool {
namespace {

constexpr std::uint32_t kHighestLevel = 100;

}  // namespace

void ScanOptions::Declare(Options& options) {
  DeclareFilter(options);
  options.Flag("--profile", profile,
               "Take every spectrum as a profile, whatever it looks like or is marked as");
  options.Flag("--centroid", centroid, "Take every spectrum as centroid data");
  options.Flag("--strict", strict, "Fail at a spectrum that cannot be evaluated instead of skipping it");
  DeclareColumns(options);
}

void ScanOptions::DeclareFilter(Options& options) {
  options.Value("--scan LIST", scan, "Only these scans, as in 3 or 1,5-9,20-");
  options.Value("--rt A-B", rt, "Only scans from A to B seconds of retention time");
  options.Value("--ms-level N", msLevel, "Only scans of this MS level");
  options.Choice("--polarity SIGN", polarity, {"positive", "negative"}, "Only scans of this polarity");
  options.Value("--function N", function,
                "Only scans of this function or experiment, as ids have it that count such");
}

void ScanOptions::DeclareColumns(Options& options) {
  options.Value("--columns MZ,AMPLITUDE", columns,
                "Columns of a text file, by name or number: mass,intensity or 2,3");
}

SpectrumChoice ScanOptions::Choice() const {
  if (profile && centroid) throw UsageError("--profile and --centroid exclude each other");
  if (msLevel && (*msLevel < 1 || *msLevel > kHighestLevel))
    throw UsageError(fmt::format("--ms-level: from 1 to {}", kHighestLevel));
  SpectrumChoice choice;
  choice.filter.columns = ParseColumnChoice("--columns", columns);
  if (!scan.empty()) choice.filter.numbers = ParseCountList("--scan", scan);
  if (!rt.empty()) {
    const RealRange range = ParseRealRange("--rt", rt);
    choice.filter.rtFrom = range.from;
    choice.filter.rtTo = range.to;
  }
  if (msLevel) choice.filter.msLevel = static_cast<int>(*msLevel);
  if (function == 0) throw UsageError("--function: counts from 1");
  choice.filter.function = function.value_or(0);
  if (!polarity.empty()) choice.filter.polarity = polarity == "positive" ? 1 : -1;
  if (profile) choice.takenAs = Scan::Profile;
  if (centroid) choice.takenAs = Scan::Centroid;
  choice.strict = strict;
  return choice;
}

SpectrumChoice ScanOptions::ChoiceOfSample() const {
  SpectrumChoice choice = Choice();
  choice.filter.takesCalibrations = choice.filter.function != 0;
  return choice;
}

}  // namespace TslTool
