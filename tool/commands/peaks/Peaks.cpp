// tslbl peaks: spectra in, peak tables out.

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <tool/chain/ChainOptions.h>
#include <tool/chain/EvaluateInOrder.h>
#include <tool/commands/Commands.h>
#include <tool/commands/peaks/CurveWriter.h>
#include <tool/commands/peaks/PeakFile.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/ScanOptions.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/detect/ThreadingParams.h>
#include <algorithm>
#include <iostream>

namespace TslTool {
namespace {

struct PeaksArguments {
  std::string input;
  ScanOptions scans;
  ChainOptions chain;
  bool showChain = false;
  bool resume = false;
  std::string format = "table";
  std::string output;
  std::string curve;
  std::optional<std::uint32_t> threads;
};

void UseThreads(std::uint32_t threads) {
  if (threads == 0) throw UsageError("--threads: there must be at least one");
  TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  params.Auto = false;
  params.ThreadPoolSize = threads;
  TslBL::SetMultiThreadingParams(params);
}

void RequireDistinct(const std::string& option, const std::string& file, const std::string& other,
                     const std::string& what) {
  if (!file.empty() && !other.empty() && SameFile(file, other))
    throw UsageError(option + ": " + file + " is " + what);
}

void Evaluate(const std::string& input, const std::vector<TslBL::CurveEval>& chain, LoadedSpectrum& loaded) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum, chain, changed, error))
    throw InputError(input, "scan " + std::to_string(loaded.scan), TslCommon::ToUtf8(error));
}

// `purpose` is what two points at least are needed for.
void RequireStretch(const std::string& input, const std::optional<RealRange>& stretch, const char* purpose,
                    const LoadedSpectrum& loaded) {
  if (!stretch) return;
  const auto inside = std::ranges::count_if(loaded.spectrum->xAxis,
                                            [&](double x) { return stretch->from <= x && x <= stretch->to; });
  if (inside < 2)
    throw InputError(
        input, "scan " + std::to_string(loaded.scan),
        fmt::format("there are no two points from m/z {} to {} {}", stretch->from, stretch->to, purpose));
}

void RequireSafeFiles(const PeaksArguments& arguments) {
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  RequireDistinct("--curve", arguments.curve, arguments.input, "the input");
  RequireDistinct("--curve", arguments.curve, arguments.output, "the --output as well");
}

void WarnOfNoPeaks(const std::string& file, const std::vector<TslBL::CurveEval>& chain) {
  if (std::ranges::none_of(chain, [](const auto& eval) { return eval.TypeText() == L"Peak Detect"; }))
    Warn(file + ": no command \"Peak Detect\", so no peaks");
}

int ShowChain(const std::vector<TslBL::CurveEval>& chain, const std::string& path) {
  Output output(path);
  output.Write(ChainToXml(chain));
  output.Commit();
  return kDone;
}

// Evaluates and writes all that the source gives, and returns the number of spectra.
std::uint64_t EvaluateAll(const PeaksArguments& arguments, const std::string& name, SpectrumSource& source,
                          const std::vector<TslBL::CurveEval>& chain, PeakFile& peaks) {
  const std::optional<RealRange> noise = arguments.chain.NoiseStretch();
  const std::optional<RealRange> search = arguments.chain.SearchStretch();
  std::optional<Output> curves;
  if (!arguments.curve.empty()) curves.emplace(arguments.curve).Write(CurveHead());
  Progress progress(source.Count(), "scans");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    RequireStretch(name, noise, "to measure the noise on", loaded);
    RequireStretch(name, search, "to find peaks among", loaded);
    Evaluate(name, chain, loaded);
    return SpectrumTexts{peaks.Part(loaded), curves ? CurvePart(loaded) : ""};
  };
  const auto write = [&](const SpectrumTexts& texts) {
    peaks.Write(texts.peaks);
    if (curves) curves->Write(texts.curve);
    progress.Step();
  };
  const std::uint64_t spectra = EvaluateInOrder(source, evaluate, write);
  if (spectra == 0) return 0;
  peaks.Commit();
  if (curves) curves->Commit();
  return spectra;
}

// With many spectra each is evaluated by one thread; a single one may be large.
void ShareThreads(const SpectrumSource& source) {
  TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  const bool alone = source.Count() == 1;
  params.FindFeature.EnableMultiThreading = alone;
  params.DescribePeaks.EnableMultiThreading = alone;
  params.SelectPeaks.EnableMultiThreading = alone;
  TslBL::SetMultiThreadingParams(params);
}

void RequireResumable(const PeaksArguments& arguments) {
  if (!arguments.resume) return;
  if (!PeakFile::CanResume(arguments.format, arguments.output))
    throw UsageError("--resume: only a table of --format tsv in an --output FILE can be resumed");
  if (!arguments.curve.empty()) throw UsageError("--resume and --curve exclude each other");
}

// What an earlier process left of the scans that are wanted now. What it wrote must be what
// comes first of them; scans without a peak do not show in a table, and are looked at again.
std::unique_ptr<SpectrumSource> RestOf(const std::string& input, const ScanFilter& wanted,
                                       const std::vector<TslBL::CurveEval>& chain, const TableEnd& done,
                                       PeakFile& peaks) {
  ScanFilter first = wanted;
  first.firstNumber = std::max(wanted.firstNumber, done.first);
  first.lastNumber = std::min(wanted.lastNumber, done.first);
  if (!OpenSpectra(input, first)->Next()) peaks.RefuseToResume(done.first, "is not asked for");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    Evaluate(input, chain, loaded);
    if (!loaded.spectrum->peaks.empty()) peaks.RefuseToResume(loaded.scan, "is asked for, and missing");
    return SpectrumTexts();
  };
  ScanFilter before = wanted;
  if (wanted.firstNumber < done.first) {
    before.lastNumber = done.first - 1;
    EvaluateInOrder(*OpenSpectra(input, before), evaluate, [](const SpectrumTexts&) {});
  }
  ScanFilter rest = wanted;
  rest.firstNumber = std::max(wanted.firstNumber, done.scan);
  return OpenSpectra(input, rest);
}

int EvaluateInput(const PeaksArguments& arguments, const Options& options, PeakFile& peaks) {
  const ScanFilter wanted = arguments.scans.Filter();
  const std::string name = arguments.input.empty() ? "demonstration run" : arguments.input;
  auto source = OpenSpectra(arguments.input, wanted);
  ShareThreads(*source);
  const std::vector<TslBL::CurveEval> chain = arguments.chain.Chain(options, source->MzStep());
  WarnOfNoPeaks(arguments.chain.File(), chain);
  if (arguments.resume)
    if (const auto& done = peaks.Resume()) source = RestOf(arguments.input, wanted, chain, *done, peaks);
  if (EvaluateAll(arguments, name, *source, chain, peaks) == 0)
    throw InputError(name, "",
                     wanted.WantsAll() ? "holds no spectrum" : "holds no spectrum that was asked for");
  Tell(name, source->Notes());
  Warn(name, source->Warnings());
  return kDone;
}

int ShowEffectiveChain(const PeaksArguments& arguments, const Options& options) {
  const auto source = OpenSpectra(arguments.input, arguments.scans.Filter());
  return ShowChain(arguments.chain.Chain(options, source->MzStep()), arguments.output);
}

int RunPeaks(const PeaksArguments& arguments, const Options& options) {
  RequireSafeFiles(arguments);
  RequireResumable(arguments);
  if (arguments.showChain) return ShowEffectiveChain(arguments, options);
  if (arguments.threads) UseThreads(*arguments.threads);
  PeakFile peaks(arguments.format, arguments.output);
  try {
    return EvaluateInput(arguments, options, peaks);
  } catch (...) {
    const std::string part = WasInterrupted() ? peaks.KeepForLater() : "";
    if (!part.empty())
      std::cerr << "tslbl: " << part << " holds the scans so far; --resume continues with it\n";
    throw;
  }
}

}  // namespace

Command PeaksCommand() {
  auto arguments = std::make_shared<PeaksArguments>();
  return {
      .name = "peaks",
      .summary = "Finds the peaks of spectra",
      .examples =
          "INPUT is a run of raw counts, an mzML file (.mzML, .mzML.gz) or text with columns\n"
          "of m/z and amplitude. Without it the built-in demonstration run is evaluated.\n\n"
          "Examples:\n"
          "  tslbl peaks                                   the demonstration run\n"
          "  tslbl peaks sample.run --scan 12              one scan as a table\n"
          "  tslbl peaks sample.run --rt 60-90 --format tsv --output peaks.tsv\n"
          "  tslbl peaks sample.run --format tsv --output peaks.tsv --resume\n"
          "  tslbl peaks sample.mzML --smooth savgol:11:2 --sn 10\n"
          "  tslbl peaks table.csv --columns mass,intensity\n"
          "  tslbl peaks sample.txt --show-chain > chain.xml   the chain in effect, to be edited\n"
          "  tslbl peaks sample.txt --chain chain.xml\n"
          "  tslbl peaks sample.run --scan 3 --curve curve.tsv   with smoothed amplitudes, baseline, noise\n",
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input, "Run, mzML file or text with columns");
            arguments->scans.Declare(options);
            arguments->chain.Declare(options);
            options.Flag("--show-chain", arguments->showChain, "Print the effective chain as XML and exit");
            options.Choice("--format FORM", arguments->format, PeakFormats(), "Form of the result");
            options.Value("-o,--output FILE", arguments->output, "Write the result to this file");
            options.Value("--curve FILE", arguments->curve,
                          "Write the evaluated curves, point by point, to this file");
            options.Flag("--resume", arguments->resume,
                         "Continue an --output FILE that was interrupted, from its FILE.part");
            options.Value("--threads N", arguments->threads,
                          "Number of threads [as many as the computer has]");
          },
      .run = [arguments](const Options& options) { return RunPeaks(*arguments, options); },
  };
}

}  // namespace TslTool
