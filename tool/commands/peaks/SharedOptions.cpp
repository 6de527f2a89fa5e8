#include <tool/commands/peaks/SharedOptions.h>

#include <fmt/format.h>

#include <tool/commands/peaks/PeakFile.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/Output.h>
#include <tool/plot/PictureName.h>

namespace TslTool {

void DeclareEvaluation(Options& options, PeaksArguments& arguments) {
  options.Value("--scale X", arguments.scale, "Multiply the amplitudes by this first [1]");
  options.Value("--min-rise X", arguments.minRise,
                fmt::format("Minimum rise of a peak above the higher of its ends, in standard deviations of "
                            "the noise about it; 0 keeps all [{}]",
                            arguments.usualRise));
  options.Value("--noise-limit X", arguments.noiseLimit,
                "Largest noise, in times that of the counts between the peaks, where amplitudes are "
                "counts; 0: as --noise finds it [2]");
}

void DeclareOutput(Options& options, PeaksArguments& arguments) {
  options.Value("-o,--output FILE", arguments.output, "Write the result to this file; - is standard output");
}

void DeclareBeside(Options& options, PeaksArguments& arguments, const std::string& curveHelp) {
  options.Value("--curve FILE", arguments.curve, curveHelp);
  options.Value("--plot FILE", arguments.plot, "Draw the one spectrum that is evaluated into this SVG file");
  options.Value("--plot-dir DIR", arguments.plotDir,
                "Draw each spectrum that is evaluated into this folder, as NAME.scanN.svg");
  options.Value("--view A-B", arguments.view, "Range of m/z that the pictures show [all]");
  options.Flag(
      "--resume", arguments.resume,
      "Continue an --output FILE that was interrupted, from its FILE.part, if the last whole scan there "
      "is what this input and chain give; earlier scans are taken as they are");
  options.Flag("-q,--quiet", arguments.quiet, "Do not tell what was taken from the data");
  options.Value("--threads N", arguments.threads, "Number of threads [as many as the computer has]");
}

void RequireSoundValues(const PeaksArguments& arguments) {
  if (arguments.scale && !(*arguments.scale > 0.0)) throw UsageError("--scale: it must be above 0");
  if (arguments.minRise && !(*arguments.minRise >= 0.0))
    throw UsageError("--min-rise: it must be 0 or above");
  if (arguments.noiseLimit && !(*arguments.noiseLimit >= 0.0))
    throw UsageError("--noise-limit: it must be 0 or above");
  if (!arguments.view.empty() && arguments.plot.empty() && arguments.plotDir.empty())
    throw UsageError("--view: is for --plot and --plot-dir");
}

void RequireSafeFiles(const PeaksArguments& arguments) {
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  if (PeakFile::CanResume(arguments.format, arguments.output))
    RequireDistinct("--output", arguments.output + ".part", arguments.input, "the input");
  RequireDistinct("--curve", arguments.curve, arguments.input, "the input");
  RequireDistinct("--curve", arguments.curve, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.input, "the input");
  RequireDistinct("--plot", arguments.plot, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.curve, "the --curve as well");
  RequirePictureName("--plot", arguments.plot);
  if (!arguments.plot.empty() && !arguments.plotDir.empty())
    throw UsageError("--plot and --plot-dir exclude each other");
  if (arguments.plot == "-" && IsStandardOutput(arguments.output))
    throw UsageError("--plot: standard output has the table; give that an --output FILE");
  if (arguments.curve == "-" && IsStandardOutput(arguments.output))
    throw UsageError("--curve: standard output has the table; give that an --output FILE");
}

void RequireSafeEdits(const PeaksArguments& arguments, const std::string& edits) {
  if (edits.empty()) return;
  RequireDistinct("--output", arguments.output, edits, "the --edits as well");
  RequireDistinct("--curve", arguments.curve, edits, "the --edits as well");
  RequireDistinct("--plot", arguments.plot, edits, "the --edits as well");
}

void RequireResumable(const PeaksArguments& arguments) {
  if (!arguments.resume) return;
  if (!PeakFile::CanResume(arguments.format, arguments.output))
    throw UsageError("--resume: only a table of --format tsv in an --output FILE can be resumed");
  if (!arguments.curve.empty()) throw UsageError("--resume and --curve exclude each other");
  if (!arguments.plot.empty()) throw UsageError("--resume and --plot exclude each other");
  if (!arguments.plotDir.empty()) throw UsageError("--resume and --plot-dir exclude each other");
}

}  // namespace TslTool
