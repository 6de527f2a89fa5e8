#include <tool/commands/peaks/EvaluateInput.h>

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <tool/chain/EvaluateInOrder.h>
#include <tool/commands/peaks/CurveWriter.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/RestOfTable.h>
#include <tool/commands/peaks/RunChain.h>
#include <tool/commands/peaks/ScansInstead.h>
#include <tool/commands/peaks/SpectrumPlot.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/Preview.h>
#include <tslbl/detect/ThreadingParams.h>
#include <algorithm>
#include <filesystem>
#include <utility>

namespace TslTool {
namespace {

std::string NameOf(const PeaksArguments& arguments) { return InputName(arguments.input); }

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

void WarnOfNoPeaks(const std::string& file, const std::vector<TslBL::CurveEval>& chain) {
  if (std::ranges::none_of(chain, [](const auto& eval) { return eval.TypeText() == L"Peak Detect"; }))
    Warn(file + ": no command \"Peak Detect\", so no peaks");
}

// A file, not a pipe: it can be read a second time.
bool CanBeReadAgain(const std::string& input) {
  std::error_code unknown;
  return input.empty() || std::filesystem::is_regular_file(input, unknown);
}

// Of spectra without a peak at the beginning of a run the rest has to tell.
Preview PreviewOf(const std::string& input, const SpectrumChoice& wanted,
                  std::unique_ptr<SpectrumSource>& source) {
  const Preview preview = LookAhead(source);
  if (preview.spectra > 0 || !CanBeReadAgain(input)) return preview;
  return LookThrough(*OpenSpectra(input, wanted));
}

struct EffectiveChain {
  std::vector<TslBL::CurveEval> evals;
  std::string derived;  // what of it was taken from the data, and why
};

EffectiveChain ChainFor(const PeaksArguments& arguments, const Options& options,
                        std::unique_ptr<SpectrumSource>& source) {
  const Preview preview = PreviewOf(arguments.input, arguments.scans.Choice(), source);
  const ChainDefaults defaults = DefaultsFor(preview, source->MzStep());
  return {arguments.chain.Chain(options, defaults), arguments.chain.Derived(defaults)};
}

// When all is done, so that it never stands before an error.
void TellDerived(const PeaksArguments& arguments, const EffectiveChain& chain) {
  if (!chain.derived.empty() && !arguments.quiet)
    Tell(fmt::format("{}: {}", NameOf(arguments), chain.derived));
}

// What is written beside the table, where it is asked for.
struct SideFiles {
  explicit SideFiles(const PeaksArguments& arguments) {
    if (!arguments.curve.empty()) curves.emplace(arguments.curve).Write(CurveHead());
    if (!arguments.plot.empty()) plot.emplace(arguments.plot);
    if (!arguments.view.empty()) view = ParseRealRange("--view", arguments.view);
  }

  void Commit() {
    if (curves) curves->Commit();
    if (plot) plot->Commit();
  }

  std::optional<Output> curves;
  std::optional<Output> plot;
  std::optional<RealRange> view;
};

std::string PlotOf(const std::string& name, const LoadedSpectrum& loaded, const SideFiles& side) {
  if (!side.plot) return "";
  return SpectrumPlot(loaded, fmt::format("{}, scan {}", name, loaded.scan), side.view);
}

// Evaluates and writes all that the source gives, and returns the number of spectra.
std::uint64_t EvaluateAll(const PeaksArguments& arguments, SpectrumSource& source,
                          const std::vector<TslBL::CurveEval>& chain, PeakFile& peaks, SideFiles& side) {
  const std::string name = NameOf(arguments);
  const std::optional<RealRange> noise = arguments.chain.NoiseStretch();
  const std::optional<RealRange> search = arguments.chain.SearchStretch();
  Progress progress(source.Count(), "scans");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    RequireStretch(name, noise, "to measure the noise on", loaded);
    RequireStretch(name, search, "to find peaks among", loaded);
    loaded.measured = loaded.spectrum->yAxis;
    RunChain(name, chain, loaded);
    if (side.plot) RequireStretch(name, side.view, "to draw", loaded);
    return SpectrumTexts{peaks.Part(loaded), side.curves ? CurvePart(loaded) : "",
                         PlotOf(name, loaded, side)};
  };
  bool isFirst = true;
  const auto write = [&](const SpectrumTexts& texts) {
    peaks.Write(texts.peaks);
    if (side.curves) side.curves->Write(texts.curve);
    if (side.plot && !std::exchange(isFirst, false))
      throw InputError(name, "", "--plot draws one spectrum, and there are several; choose one with --scan");
    if (side.plot) side.plot->Write(texts.plot);
    progress.Step();
  };
  const std::uint64_t spectra = EvaluateInOrder(source, evaluate, write);
  if (spectra == 0) return 0;
  peaks.Commit();
  side.Commit();
  return spectra;
}

[[noreturn]] void RefuseNothing(const PeaksArguments& arguments, const SpectrumSource& source) {
  const bool all = arguments.scans.Choice().filter.WantsAll();
  std::string reason = all ? "holds no spectrum" : "holds no spectrum that was asked for";
  if (CanBeReadAgain(arguments.input)) reason += ScansInstead(arguments.input, arguments.scans.Choice());
  if (const std::string skipped = source.Skipped(); !skipped.empty())
    reason = fmt::format("holds no spectrum to evaluate: {}", skipped);
  if (reason.find("centroid") != std::string::npos) reason += "; --profile takes all as profiles";
  throw InputError(NameOf(arguments), "", reason);
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

void EvaluateInto(PeakFile& peaks, const PeaksArguments& arguments, const Options& options) {
  const SpectrumChoice wanted = arguments.scans.Choice();
  auto source = OpenSpectra(arguments.input, wanted);
  ShareThreads(*source);
  SideFiles side(arguments);
  const EffectiveChain chain = ChainFor(arguments, options, source);
  WarnOfNoPeaks(arguments.chain.File(), chain.evals);
  if (arguments.resume)
    if (const auto& done = peaks.Resume())
      source = RestOfTable(arguments.input, wanted, chain.evals, *done, peaks);
  if (EvaluateAll(arguments, *source, chain.evals, peaks, side) == 0) RefuseNothing(arguments, *source);
  if (!arguments.quiet) Tell(NameOf(arguments), source->Notes());
  TellDerived(arguments, chain);
  if (const std::string skipped = source->Skipped(); !skipped.empty())
    Warn(fmt::format("{}: {}", NameOf(arguments), skipped));
  Warn(NameOf(arguments), source->Warnings());
}

}  // namespace

void EvaluateInput(const PeaksArguments& arguments, const Options& options) {
  PeakFile peaks(arguments.format, arguments.output);
  try {
    EvaluateInto(peaks, arguments, options);
  } catch (...) {
    const std::string part = WasInterrupted() ? peaks.KeepForLater() : "";
    if (!part.empty()) Tell(part + " holds the scans so far; --resume continues with it");
    throw;
  }
}

void ShowChain(const PeaksArguments& arguments, const Options& options) {
  auto source = OpenSpectra(arguments.input, arguments.scans.Choice());
  const EffectiveChain chain = ChainFor(arguments, options, source);
  Output output(arguments.output);
  output.Write(ChainToXml(chain.evals));
  output.Commit();
  TellDerived(arguments, chain);
}

}  // namespace TslTool
