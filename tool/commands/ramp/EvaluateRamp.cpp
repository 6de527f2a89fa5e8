#include <tool/commands/ramp/EvaluateRamp.h>

#include <fmt/format.h>

#include <tool/chain/EvaluateInOrder.h>
#include <tool/commands/peaks/Evaluation.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/Preview.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>
#include <mutex>

namespace TslTool {
namespace {

// As `peaks` has them.
constexpr double kLeastRise = 2.5;
constexpr double kNoiseLimit = 2.0;

std::vector<TslBL::MZPeak> BasePeaks(const TslBL::Spectrum& spectrum, const std::vector<double>& mz,
                                     double window) {
  std::vector<TslBL::MZPeak> table = TslBL::CreateMZPeakTable(spectrum);
  std::ranges::sort(table, {}, &TslBL::MZPeak::Mass);
  std::vector<TslBL::MZPeak> peaks;
  peaks.reserve(mz.size());
  for (const double at : mz)
    peaks.push_back(TslBL::FindBasePeak(table, {TslBL::MZRange::Partial, at - window, at + window}));
  return peaks;
}

}  // namespace

RampSpectra EvaluateRamp(const RampEvaluation& asked, const Options& options, const RampSteps& steps) {
  auto source = OpenSpectra(asked.run, asked.scans.Choice());
  const Preview preview = asked.chain.NeedsDefaults() ? LookAhead(source) : Preview();
  const ChainDefaults defaults = DefaultsFor(preview, source->MzStep());
  const Evaluation evaluation{asked.run,  asked.chain.Chain(options, defaults),
                              1.0,        asked.chain.ToleratesOffset(),
                              kLeastRise, kNoiseLimit};
  RampSpectra spectra;
  std::mutex gathering;
  Progress progress(source->Count(), "scans");
  EvaluateInOrder(
      *source,
      [&](LoadedSpectrum& loaded) {
        evaluation.Run(loaded);
        RampSpectrum spectrum{steps.ofTune.at(loaded.spectrum->tuneId),
                              BasePeaks(*loaded.spectrum, asked.mz, asked.window)};
        const std::lock_guard lock(gathering);
        spectra.emplace(loaded.scan, std::move(spectrum));
        return SpectrumTexts();
      },
      [&](const SpectrumTexts&) { progress.Step(); });
  if (const std::string derived = asked.chain.Derived(defaults); !derived.empty() && !asked.quiet)
    Tell(fmt::format("{}: {}", asked.run, derived));
  Warn(asked.run, source->Warnings());
  return spectra;
}

}  // namespace TslTool
