// tslbl average: many spectra in, one out.

#include <fmt/format.h>

#include <tool/commands/Commands.h>
#include <tool/commands/average/AverageFile.h>
#include <tool/commands/average/AverageOf.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/ScanOptions.h>
#include <memory>

namespace TslTool {
namespace {

struct AverageArguments {
  std::string input;
  ScanOptions scans;
  std::string minus;
  std::string minusScan;
  std::string format;
  std::string output;
  bool quiet = false;
};

bool HasBackground(const AverageArguments& arguments) {
  return !arguments.minus.empty() || !arguments.minusScan.empty();
}

// Of the same level, polarity and columns, but of other scans.
SpectrumChoice BackgroundOf(const AverageArguments& arguments) {
  ScanOptions background = arguments.scans;
  background.scan = arguments.minusScan;
  background.rt = arguments.minus;
  return background.ChoiceOfSample();
}

// What the user chose scans by, as in "--rt 60-90".
std::string ChosenBy(const std::string& scanOption, const std::string& scan, const std::string& rtOption,
                     const std::string& rt) {
  std::string text;
  if (!scan.empty()) text += fmt::format("{} {}", scanOption, scan);
  if (!rt.empty()) text += fmt::format("{}{} {}", text.empty() ? "" : " ", rtOption, rt);
  return text;
}

std::string FormatOf(const AverageArguments& arguments) {
  return arguments.format.empty() ? AverageFormatOf(arguments.output) : arguments.format;
}

void RequireSensible(const AverageArguments& arguments) {
  if (arguments.input.empty()) throw UsageError("INPUT is required");
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  const bool isRun = FormatOf(arguments) == "run";
  if (isRun && IsStandardOutput(arguments.output))
    throw UsageError("--format run: a run is written to an --output FILE only");
  if (isRun && HasBackground(arguments))
    throw UsageError(
        "--format run: a run holds counts, and without a background they are none; --format "
        "text or mzml takes them");
}

void TellOf(const AverageArguments& arguments, const Averaged& averaged, const char* what) {
  const std::string name = InputName(arguments.input);
  if (!arguments.quiet) {
    Tell(fmt::format("{}: {} of {} spectr{}{}", name, what, averaged.spectra,
                     averaged.spectra == 1 ? "um" : "a",
                     averaged.isOneAxis ? "" : ", whose m/z axes differ, on one axis"));
    Tell(name, averaged.notes);
  }
  Warn(name, averaged.warnings);
}

void SubtractBackground(const AverageArguments& arguments, Averaged& averaged) {
  const Averaged background = AverageOf(arguments.input, BackgroundOf(arguments));
  const std::size_t beyond = Subtract(averaged, background);
  TellOf(arguments, background, "background is the average");
  if (beyond > 0)
    Warn(fmt::format("{}: the background does not reach {} of {} points, which stay as they are",
                     InputName(arguments.input), beyond, averaged.loaded.spectrum->yAxis.size()));
}

void WriteAverageOf(const AverageArguments& arguments) {
  if (HasBackground(arguments) && !CanBeReadAgain(arguments.input))
    throw UsageError("--minus: the input is read twice, and this can be read once; give the name of a file");
  Averaged averaged = AverageOf(arguments.input, arguments.scans.ChoiceOfSample());
  if (HasBackground(arguments)) SubtractBackground(arguments, averaged);
  const AverageOrigin origin = {arguments.input,
                                ChosenBy("--scan", arguments.scans.scan, "--rt", arguments.scans.rt),
                                ChosenBy("--minus-scan", arguments.minusScan, "--minus", arguments.minus)};
  WriteAverage(averaged, origin, FormatOf(arguments), arguments.output);
  TellOf(arguments, averaged, FormatOf(arguments) == "run" ? "sum" : "average");
}

int RunAverage(AverageArguments arguments) {
  RequireSensible(arguments);
  arguments.input = InputPath(arguments.input);
  NamingStandardInput([&] { WriteAverageOf(arguments); });
  return kDone;
}

constexpr const char* kExamples =
    "INPUT is a run of raw counts, an mzML file (.mzML, .mzML.gz) or text with columns\n"
    "of m/z and amplitude; - is standard input. Without a choice all of its spectra are\n"
    "averaged. They may be many: memory holds one of them and the sum.\n\n"
    "Where all spectra have one m/z axis, points are added as they are. Others are read\n"
    "between their points onto one axis that takes in all of theirs.\n\n"
    "The result is text unless the name of the --output ends in .mzML or .run. A run holds\n"
    "counts: it gets the sum of the scans, and its tune counts as often, so that its count\n"
    "rates are those of the average. That needs a run with one tune, and no background.\n\n"
    "With --minus amplitudes may fall below 0; they stay so, as cutting them off would\n"
    "change the noise. Its spectra are of the same level and polarity as the others.\n\n"
    "Examples:\n"
    "  tslbl average sample.run --rt 60-90 --output peak.run\n"
    "  tslbl average sample.run --rt 60-90 --minus 10-40 --output peak.mzML\n"
    "  tslbl average sample.mzML --ms-level 1 --polarity positive --output mean.txt\n"
    "  tslbl average sample.run --scan 5-9 | tslbl peaks -\n";

}  // namespace

Command AverageCommand() {
  auto arguments = std::make_shared<AverageArguments>();
  return {
      .name = "average",
      .summary = "Averages spectra, and subtracts a background",
      .examples = kExamples,
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input,
                          "Run, mzML file or text with columns; - is standard input");
            arguments->scans.Declare(options);
            options.Value("--minus A-B", arguments->minus,
                          "Subtract the average of the scans from A to B seconds");
            options.Value("--minus-scan LIST", arguments->minusScan,
                          "Subtract the average of these scans, as in 3 or 1,5-9,20-");
            options.Choice("--format FORM", arguments->format, AverageFormats(),
                           "Form of the result [as the --output is named, else text]");
            options.Value("-o,--output FILE", arguments->output,
                          "Write the result to this file; - is standard output");
            options.Flag("-q,--quiet", arguments->quiet, "Do not tell what was averaged");
          },
      .run = [arguments](const Options&) { return RunAverage(*arguments); },
  };
}

}  // namespace TslTool
