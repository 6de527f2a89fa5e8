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
  if (loaded.isPeakList) return Order::OfList;
  return AreIsotopesResolved(params) ? Order::ResolvedFirst : Order::UnresolvedFirst;
}

// Resolved series have no range of masses of their own.
void KeepWithin(const RealRange& mass, DeconSpectrum& spectrum) {
  DropSeries(spectrum, [&](const TslBL::CSSeriesInfo& series) {
    return series.AvgMass < mass.from || series.AvgMass > mass.to;
  });
}

bool IsUnresolved(const TslBL::CSSeriesInfo& series) {
  return series.Series.Type == TslBL::CSSeries::Unresolved;
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
    auto spectrum = Find(loaded);
    for (const SeriesEdit& edit : edits) EditSeries(*spectrum, edit);
    Count(*spectrum);
    loaded.spectrum = std::move(spectrum);
  } catch (...) {
    // An engine's failure is no std::exception.
    throw InputError(input_, fmt::format("scan {}", loaded.scan), FailureText(std::current_exception()));
  }
}

std::unique_ptr<DeconSpectrum> ChargeStates::Deconvolved(const LoadedSpectrum& loaded,
                                                         const TslBL::ChargeStateParams& params) {
  auto spectrum = std::make_unique<DeconSpectrum>(*loaded.spectrum);
  spectrum->CSParams = params;
  ofChance_ += FindSeries(*spectrum, OrderFor(loaded, params));
  if (params.UseOPD) DropUnsureSeries(*spectrum);
  if (wishes_.mass) KeepWithin(*wishes_.mass, *spectrum);
  return spectrum;
}

// Peaks of a protein are as wide as isotopes that run into each other: only where no series of charges is
// found they are taken for isotopes.
std::unique_ptr<DeconSpectrum> ChargeStates::Find(LoadedSpectrum& loaded) {
  TslBL::ChargeStateParams params = DerivedParams(wishes_, loaded);
  auto spectrum = Deconvolved(loaded, params);
  const bool mayTouch = params.Method != TslBL::ChargeStateParams::UnresolvedOnly && !wishes_.hasOverlap &&
                        MayIsotopesTouch(loaded) && std::ranges::none_of(spectrum->Series, IsUnresolved);
  if (!mayTouch) return spectrum;
  overlap_.Run(loaded);
  params.UseOPD = true;
  params.Method = TslBL::ChargeStateParams::ResolvedOnly;
  auto apart = Deconvolved(loaded, params);
  // Tops that are shifted make some series of their own.
  if (apart->Series.empty() || 5 * apart->Series.size() < 4 * spectrum->Series.size()) return spectrum;
  ++takenApart_;
  return apart;
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
  if (takenApart_ > 0)
    note += fmt::format(", which overlap and were taken apart in {} of {} spectra", takenApart_.load(),
                        spectra_.load());
  if (ofChance_ > 0)
    note += fmt::format("; {} of lists left out, as good ones come about by chance", ofChance_.load());
  return note;
}

}  // namespace TslTool
