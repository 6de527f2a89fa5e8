#include <tool/commands/decon/ChargeStates.h>

#include <fmt/format.h>

#include <tool/commands/decon/DerivedParams.h>
#include <tool/commands/decon/DropSeries.h>
#include <tool/commands/decon/EditSeries.h>
#include <tool/commands/decon/FindSeries.h>
#include <tool/frame/Failure.h>
#include <tool/frame/InputError.h>
#include <algorithm>
#include <exception>
#include <utility>

namespace TslTool {
namespace {

using TslBL::DeconSpectrum;

// Widths tell it; a list of peaks has none.
Order OrderFor(const LoadedSpectrum& loaded, const TslBL::ChargeStateParams& params) {
  if (loaded.isPeakList) return Order::ByIntensity;
  return AreIsotopesResolved(params) ? Order::ResolvedFirst : Order::UnresolvedFirst;
}

// Resolved series have no range of masses of their own.
void KeepWithin(const RealRange& mass, DeconSpectrum& spectrum) {
  DropSeries(spectrum, [&](const TslBL::CSSeriesInfo& series) {
    return series.AvgMass < mass.from || series.AvgMass > mass.to;
  });
}

std::unique_ptr<DeconSpectrum> Deconvolved(const LoadedSpectrum& loaded, const DeconWishes& wishes,
                                           const std::vector<SeriesEdit>& edits) {
  auto spectrum = std::make_unique<DeconSpectrum>(*loaded.spectrum);
  spectrum->CSParams = DerivedParams(wishes, loaded);
  FindSeries(*spectrum, OrderFor(loaded, spectrum->CSParams));
  if (wishes.mass) KeepWithin(*wishes.mass, *spectrum);
  for (const SeriesEdit& edit : edits) EditSeries(*spectrum, edit);
  return spectrum;
}

}  // namespace

ChargeStates::ChargeStates(std::string input, DeconWishes wishes, ScanEdits<SeriesEdit>& edits)
    : input_(std::move(input)),
      wishes_(std::move(wishes)),
      edits_(edits),
      overlap_(input_, OverlapOptions(), {}, {}) {}

void ChargeStates::Run(LoadedSpectrum& loaded) {
  const std::vector<SeriesEdit>& edits = edits_.Of(loaded.scan);
  if (wishes_.params.UseOPD && !loaded.isPeakList) overlap_.Run(loaded);
  try {
    auto spectrum = Deconvolved(loaded, wishes_, edits);
    Count(*spectrum);
    loaded.spectrum = std::move(spectrum);
  } catch (...) {
    // An engine's failure is no std::exception.
    throw InputError(input_, fmt::format("scan {}", loaded.scan), FailureText(std::current_exception()));
  }
}

void ChargeStates::Count(const DeconSpectrum& spectrum) {
  ++spectra_;
  series_ += spectrum.Series.size();
  if (!spectrum.Series.empty()) ++withSeries_;
  const std::uint32_t maxCharge = spectrum.CSParams.Resolved.MaxCS;
  const std::lock_guard lock(mutex_);
  leastMaxCharge_ = leastMaxCharge_ == 0 ? maxCharge : std::min(leastMaxCharge_, maxCharge);
  mostMaxCharge_ = std::max(mostMaxCharge_, maxCharge);
}

std::string ChargeStates::Note() const {
  const std::lock_guard lock(mutex_);
  std::string note =
      fmt::format("{} series in {} of {} spectra", series_.load(), withSeries_.load(), spectra_.load());
  if (wishes_.params.Method == TslBL::ChargeStateParams::UnresolvedOnly) return note;
  note += "; isotopes looked for at charges to ";
  note += leastMaxCharge_ == mostMaxCharge_ ? fmt::format("{}", mostMaxCharge_)
                                            : fmt::format("{} to {}", leastMaxCharge_, mostMaxCharge_);
  return note;
}

}  // namespace TslTool
