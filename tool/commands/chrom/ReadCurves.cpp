#include <tool/commands/chrom/ReadCurves.h>

#include <fmt/format.h>

#include <tool/chain/InOrder.h>
#include <tool/commands/chrom/CurveChoice.h>
#include <tool/commands/chrom/GatherScans.h>
#include <tool/commands/chrom/ScanPoints.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Progress.h>
#include <tool/io/InputPath.h>
#include <tool/io/MzMLChromatograms.h>
#include <tool/io/TraceFile.h>
#include <algorithm>

namespace TslTool {
namespace {

// What the user gave that only scans have.
std::string GivenForScans(const ChromArguments& arguments) {
  const SpectrumChoice all;
  if (!arguments.curvesFrom.empty()) return "--curves-from";
  if (!arguments.ranges.empty()) return "--range";
  if (arguments.isMean) return "--mean";
  if (!(arguments.scans.Choice().filter == all.filter))
    return "--scan, --rt, --ms-level, --polarity or --function";
  return "";
}

void RefuseScanOptions(const ChromArguments& arguments, const char* kind) {
  const std::string given = GivenForScans(arguments);
  if (!given.empty()) throw UsageError(fmt::format("{}: is for scans, and this is {}", given, kind));
}

void RefuseTextOptions(const ChromArguments& arguments) {
  if (!arguments.columns.empty()) throw UsageError("--columns: is for text");
  if (!arguments.timeUnit.empty()) throw UsageError("--time-unit: is for text");
}

bool WantsStored(const ChromArguments& arguments) { return arguments.isStored || !arguments.only.empty(); }

[[noreturn]] void RefuseNothing(const ChromArguments& arguments, const PointSource& source) {
  std::string reason = arguments.scans.Choice().filter.WantsAll() ? "holds no spectrum"
                                                                  : "holds no spectrum that was asked for";
  if (const std::string skipped = source.Skipped(); !skipped.empty()) reason += ": " + skipped;
  if (const std::uint64_t stored = source.PassedOver().count; stored > 0)
    reason += fmt::format("; {} chromatogram{} stored, which --stored takes", stored,
                          stored == 1 ? " is" : "s are");
  throw InputError(InputName(arguments.input), "", reason);
}

// Empty without a scan.
MeasuredCurves FromScans(const ChromArguments& arguments, const CurveChoice& choice, PointSource& source) {
  GatherScans gather(InputName(arguments.input), choice, arguments.isMean,
                     arguments.scans.msLevel.has_value());
  Progress progress(source.Count(), "scans");
  WorkInOrder<ScanPoint>([&] { return source.Next(); },
                         [&](ScanPoint& point) {
                           gather.Add(point);
                           progress.Step();
                         });
  MeasuredCurves read;
  if (gather.Scans() == 0) return read;
  read.curves = gather.Curves();
  read.notes = gather.Notes();
  read.warnings = gather.Warnings();
  if (std::string skipped = source.Skipped(); !skipped.empty()) read.warnings.push_back(std::move(skipped));
  for (std::string& odd : source.Warnings()) read.warnings.push_back(std::move(odd));
  return read;
}

// Of traces with one name, all but the first get a number.
std::string NameFor(const Trace& trace, const std::vector<Chromatogram>& before) {
  const auto isTaken = [&](const std::string& name) {
    return std::ranges::any_of(before, [&](const Chromatogram& c) { return c.name == name; });
  };
  if (!isTaken(trace.name)) return trace.name;
  std::size_t number = 2;
  while (isTaken(fmt::format("{} ({})", trace.name, number))) ++number;
  return fmt::format("{} ({})", trace.name, number);
}

MeasuredCurves FromTraces(Traces traces) {
  MeasuredCurves read{{}, std::move(traces.notes), std::move(traces.warnings)};
  for (Trace& trace : traces.all) {
    const std::string name = NameFor(trace, read.curves);
    read.curves.push_back({name, trace.title, std::move(trace.seconds), std::move(trace.values), {}, {}});
  }
  return read;
}

MeasuredCurves FromText(const ChromArguments& arguments, ForeignFile file) {
  RefuseScanOptions(arguments, "a text");
  if (WantsStored(arguments)) throw UsageError("--stored, --id: are for mzML, and this is a text");
  TraceChoice choice{ParseColumnChoice("--columns", arguments.columns)};
  if (!arguments.timeUnit.empty()) choice.secondsPerUnit = SecondsInWord(arguments.timeUnit);
  return FromTraces(ReadTraces(std::move(file.source), choice, std::move(file.warnings)));
}

MeasuredCurves FromStored(const ChromArguments& arguments, ForeignFile file) {
  RefuseScanOptions(arguments, "a stored chromatogram");
  MeasuredCurves read =
      FromTraces(ReadChromatograms(std::move(file.source), arguments.only, std::move(file.warnings)));
  if (read.curves.empty()) {
    std::string reason = "holds no chromatogram of its own";
    for (const std::string& why : read.warnings) reason += "; " + why;
    throw InputError(InputName(arguments.input), "", reason);
  }
  return read;
}

// Where there are no scans the chromatograms that it holds are what is meant.
MeasuredCurves FromMzML(const ChromArguments& arguments, const CurveChoice& choice, ForeignFile file) {
  RefuseTextOptions(arguments);
  if (WantsStored(arguments)) return FromStored(arguments, std::move(file));
  const auto source = OpenMzMLPoints(std::move(file), arguments.scans.ChoiceOfSample(), choice.Ranges());
  MeasuredCurves read = FromScans(arguments, choice, *source);
  if (!read.curves.empty()) return read;
  const bool mayBeStored = source->PassedOver().count > 0 && source->Skipped().empty() &&
                           GivenForScans(arguments).empty() && CanBeReadAgain(arguments.input);
  if (!mayBeStored) RefuseNothing(arguments, *source);
  read = FromStored(arguments, OpenForeign(arguments.input));
  read.notes.emplace_back("holds no spectrum; the chromatograms stored in it are taken");
  return read;
}

MeasuredCurves FromRun(const ChromArguments& arguments, const CurveChoice& choice) {
  RefuseTextOptions(arguments);
  if (WantsStored(arguments)) throw UsageError("--stored, --id: are for mzML, and this is a run");
  const auto source = OpenRunPoints(arguments.input, arguments.scans.Choice(), choice.Ranges());
  MeasuredCurves read = FromScans(arguments, choice, *source);
  if (read.curves.empty()) RefuseNothing(arguments, *source);
  return read;
}

}  // namespace

MeasuredCurves ReadCurves(const ChromArguments& arguments) {
  const CurveChoice choice(arguments.ranges, arguments.definitions);
  if (arguments.input.empty() || IsDatabase(arguments.input)) return FromRun(arguments, choice);
  ForeignFile file = OpenForeign(arguments.input);
  return file.isMzML ? FromMzML(arguments, choice, std::move(file)) : FromText(arguments, std::move(file));
}

}  // namespace TslTool
