#include <tool/commands/peaks/EvaluateInput.h>

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <tool/chain/EvaluateInOrder.h>
#include <tool/commands/peaks/Evaluation.h>
#include <tool/commands/peaks/EvaluationRemarks.h>
#include <tool/commands/peaks/PeakWriter.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/PictureFiles.h>
#include <tool/commands/peaks/RefuseNothing.h>
#include <tool/commands/peaks/RestOfTable.h>
#include <tool/commands/peaks/SpectrumPlot.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/OpenScans.h>
#include <tool/io/Preview.h>
#include <tslbl/detect/ThreadingParams.h>
#include <algorithm>
#include <atomic>
#include <map>

namespace TslTool {
namespace {

constexpr double kNoiseLimit = 2.0;  // times the noise of counts

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

// Of spectra without strong peaks at the beginning of a run the rest has to tell.
Preview PreviewOf(const std::string& input, const SpectrumChoice& wanted,
                  std::unique_ptr<SpectrumSource>& source) {
  Preview preview = LookAhead(source);
  if (preview.isSettled || !CanBeOpenedAgain(input)) return preview;
  return LookThrough(*OpenSpectra(input, wanted));
}

struct EffectiveChain {
  std::vector<TslBL::CurveEval> evals;
  std::string derived;                // what of it was taken from the data, and why
  std::vector<std::string> troubles;  // what of the data it does not suit
};

constexpr double kOtherWidth = 1.6;

// One chain serves peaks of about one width.
std::string TroubleWithLevels(const std::map<int, double>& widths) {
  if (widths.size() < 2) return "";
  const auto width = [](const auto& each) { return each.second; };
  const auto [narrow, wide] = std::ranges::minmax_element(widths, {}, width);
  if (wide->second <= kOtherWidth * narrow->second) return "";
  return fmt::format(
      "peaks of MS level {} are {:.1f} points wide and those of level {} {:.1f}, too different for one "
      "chain: false and lost peaks are likely; --ms-level N evaluates a level with a chain of its own",
      wide->first, wide->second, narrow->first, narrow->second);
}

std::vector<std::string> TroublesOf(const Preview& preview) {
  std::vector<std::string> troubles = {TroubleWithLevels(preview.pointsAcrossOfLevel)};
  if (preview.isNoiseCorrelated || preview.areBumpsSmooth)
    troubles.push_back(
        "noise runs over neighbouring points, as that of Fourier transforms and of smoothed curves does: "
        "standard errors are too small, those of areas up to sevenfold in Fourier spectra and more where a "
        "program smoothed");
  std::erase(troubles, "");
  return troubles;
}

EffectiveChain ChainFor(const PeaksArguments& arguments, const Options& options, const SpectrumChoice& wanted,
                        std::unique_ptr<SpectrumSource>& source) {
  const bool isLookNeeded = arguments.chain.NeedsDefaults();
  const Preview preview = isLookNeeded ? PreviewOf(arguments.input, wanted, source) : Preview();
  Preview seen = preview;
  seen.isNoiseCorrelated &= arguments.barsBumps;
  const ChainDefaults defaults = DefaultsFor(seen, source->MzStep());
  return {arguments.chain.Chain(options, defaults), arguments.chain.Derived(defaults), TroublesOf(preview)};
}

// When all is done, so that it never stands before an error.
void TellDerived(const PeaksArguments& arguments, const EffectiveChain& chain) {
  if (!chain.derived.empty() && !arguments.quiet)
    Tell(fmt::format("{}: {}", NameOf(arguments), chain.derived));
}

// What comes of the spectra beside the table: files that are asked for, and remarks.
struct BesideTable {
  BesideTable(const PeaksArguments& arguments, const SpectrumProduct& product)
      : pictures(arguments.input, arguments.plot, arguments.plotDir) {
    if (!arguments.curve.empty()) curves.emplace(arguments.curve).Write(product.curveHead());
    if (!arguments.view.empty()) view = ParseRealRange("--view", arguments.view);
  }

  void Commit() {
    if (curves) curves->Commit();
    pictures.Commit();
  }

  std::optional<Output> curves;
  PictureFiles pictures;
  std::optional<RealRange> view;
  EvaluationRemarks remarks;
  std::atomic<std::uint64_t> profiles = 0;
  std::atomic<std::uint64_t> peakLists = 0;  // that were taken as they are
};

std::string PlotOf(const std::string& name, const LoadedSpectrum& loaded, const BesideTable& beside,
                   const SpectrumProduct& product) {
  if (!beside.pictures.AreWanted()) return "";
  return product.plot(loaded, fmt::format("{}, scan {}", name, loaded.scan), beside.view);
}

// Evaluates and writes all that the source gives, and returns the number of spectra.
std::uint64_t EvaluateAll(const PeaksArguments& arguments, SpectrumSource& source,
                          const Evaluation& evaluation, PeakFile& peaks, BesideTable& beside,
                          const SpectrumProduct& product) {
  const std::string name = NameOf(arguments);
  const std::optional<RealRange> noise = arguments.chain.NoiseStretch();
  const std::optional<RealRange> search = arguments.chain.SearchStretch();
  Progress progress(source.Count(), "scans");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    RequireStretch(name, noise, "to measure the noise on", loaded);
    RequireStretch(name, search, "to find peaks among", loaded);
    const Findings findings = evaluation.Run(loaded);
    loaded.isPeakList ? ++beside.peakLists : ++beside.profiles;
    if (!loaded.isPeakList) beside.remarks.Look(loaded, findings);
    if (product.finish) product.finish(loaded);
    if (beside.pictures.AreWanted()) RequireStretch(name, beside.view, "to draw", loaded);
    return SpectrumTexts{peaks.Part(loaded), beside.curves ? product.curvePart(loaded) : "",
                         PlotOf(name, loaded, beside, product), loaded.scan};
  };
  const auto write = [&](const SpectrumTexts& texts) {
    beside.pictures.Write(texts.scan, texts.plot);
    peaks.Write(texts.peaks);
    if (beside.curves) beside.curves->Write(texts.curve);
    progress.Step();
  };
  const std::uint64_t spectra = EvaluateInOrder(source, evaluate, write);
  if (spectra == 0) return 0;
  peaks.Commit();
  beside.Commit();
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

void EvaluateInto(PeakFile& peaks, const PeaksArguments& arguments, const Options& options,
                  const SpectrumProduct& product) {
  SpectrumChoice wanted = arguments.scans.Choice();
  wanted.withPeakLists = product.takesPeakLists;
  auto source = OpenSpectra(arguments.input, wanted);
  ShareThreads(*source);
  BesideTable beside(arguments, product);
  const EffectiveChain chain = ChainFor(arguments, options, wanted, source);
  WarnOfNoPeaks(arguments.chain.File(), chain.evals);
  const Evaluation evaluation{NameOf(arguments),
                              chain.evals,
                              arguments.scale.value_or(1.0),
                              arguments.chain.ToleratesOffset(),
                              arguments.minRise.value_or(arguments.usualRise),
                              arguments.noiseLimit.value_or(kNoiseLimit)};
  peaks.Describe({arguments.input, source->Ids(), chain.evals, arguments.scale});
  if (arguments.resume)
    if (const auto& done = peaks.Resume())
      source = RestOfTable(arguments.input, wanted, evaluation, *done, peaks);
  if (EvaluateAll(arguments, *source, evaluation, peaks, beside, product) == 0)
    RefuseNothing(arguments.input, wanted, *source);
  if (!arguments.quiet) Tell(NameOf(arguments), source->Notes());
  if (beside.profiles > 0) TellDerived(arguments, chain);
  if (beside.peakLists > 0 && !arguments.quiet)
    Tell(fmt::format("{}: {} of {} spectra are lists of peaks, taken as they are", NameOf(arguments),
                     beside.peakLists.load(), beside.peakLists + beside.profiles));
  if (!arguments.quiet) Tell(NameOf(arguments), beside.remarks.Notes());
  if (beside.profiles > 0) Warn(NameOf(arguments), chain.troubles);
  Warn(NameOf(arguments), beside.remarks.Texts());
  if (const std::string skipped = source->Skipped(); !skipped.empty())
    Warn(fmt::format("{}: {}", NameOf(arguments), skipped));
  Warn(NameOf(arguments), source->Warnings());
}

}  // namespace

SpectrumProduct PeakTables() {
  return {[](const std::string& format) -> std::unique_ptr<SpectrumWriter> { return MakePeakWriter(format); },
          SpectrumPlot};
}

void EvaluateInput(const PeaksArguments& arguments, const Options& options, const SpectrumProduct& product) {
  PeakFile peaks(product.makeWriter(arguments.format), arguments.format, arguments.output);
  try {
    EvaluateInto(peaks, arguments, options, product);
  } catch (...) {
    const std::string part = WasInterrupted() ? peaks.KeepForLater() : "";
    if (!part.empty()) Tell(part + " holds the scans so far; --resume continues with it");
    throw;
  }
}

void ShowChain(const PeaksArguments& arguments, const Options& options) {
  const SpectrumChoice wanted = arguments.scans.Choice();
  auto source = OpenSpectra(arguments.input, wanted);
  const EffectiveChain chain = ChainFor(arguments, options, wanted, source);
  Output output(arguments.output);
  output.Write(ChainToXml(chain.evals));
  output.Commit();
  TellDerived(arguments, chain);
}

}  // namespace TslTool
