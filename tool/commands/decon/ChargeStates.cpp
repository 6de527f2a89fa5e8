#include <tool/commands/decon/ChargeStates.h>

#include <fmt/format.h>

#include <tool/commands/decon/Companions.h>
#include <tool/commands/decon/DerivedParams.h>
#include <tool/commands/decon/DropSeries.h>
#include <tool/commands/decon/EditSeries.h>
#include <tool/commands/decon/FindSeries.h>
#include <tool/frame/Failure.h>
#include <tool/frame/InputError.h>
#include <algorithm>
#include <exception>
#include <iterator>
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

struct Finds {
  std::size_t resolved = 0;
  std::size_t unresolved = 0;
  std::size_t charges = 0;  // of the unresolved ones
};

Finds FindsOf(const DeconSpectrum& spectrum) {
  Finds finds;
  for (const TslBL::CSSeriesInfo& series : spectrum.Series) {
    if (!IsUnresolved(series)) {
      ++finds.resolved;
    } else {
      ++finds.unresolved;
      finds.charges += series.Peaks.size();
    }
  }
  return finds;
}

// Noise parts a line now and then, which its series then lacks. A resolved molecule that is lost for another
// protein was made of what is that one's.
bool AreBetter(const DeconSpectrum& apart, const DeconSpectrum& before) {
  const Finds now = FindsOf(apart);
  const Finds then = FindsOf(before);
  if (now.unresolved < then.unresolved || now.charges < then.charges) return false;
  return now.unresolved > then.unresolved || now.resolved >= then.resolved;
}

}  // namespace

ChargeStates::ChargeStates(std::string input, DeconWishes wishes, ScanEdits<SeriesEdit>& edits)
    : input_(std::move(input)),
      wishes_(std::move(wishes)),
      edits_(edits),
      overlap_(input_, OverlapOptions(), {}, {}),
      lines_(input_, OverlapOptions(), {}, {}) {}

void ChargeStates::Run(LoadedSpectrum& loaded) {
  const std::vector<SeriesEdit>& edits = edits_.Of(loaded.scan);
  if (wishes_.params.UseOPD && !loaded.isPeakList) overlap_.Run(loaded);
  try {
    auto spectrum = Find(loaded);
    for (const SeriesEdit& edit : edits) EditSeries(*spectrum, edit);
    Count(*spectrum);
    molecules_.Look(*spectrum, loaded.scan);
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

std::unique_ptr<DeconSpectrum> ChargeStates::Find(LoadedSpectrum& loaded) {
  const TslBL::ChargeStateParams params = DerivedParams(wishes_, loaded);
  auto spectrum = Deconvolved(loaded, params);
  if (params.UseOPD && MergeCompanions(*spectrum, *loaded.spectrum)) return Deconvolved(loaded, params);
  if (wishes_.hasOverlap || loaded.isPeakList) return spectrum;
  if (std::ranges::any_of(spectrum->Series, IsUnresolved))
    return WithLinesApart(loaded, params, std::move(spectrum));
  if (params.Method != TslBL::ChargeStateParams::UnresolvedOnly && MayIsotopesTouch(loaded))
    return WithIsotopesApart(loaded, params, std::move(spectrum));
  return spectrum;
}

// Molecules whose masses differ by less than their lines are wide make one line, of a mass that neither has.
std::unique_ptr<DeconSpectrum> ChargeStates::WithLinesApart(LoadedSpectrum& loaded,
                                                            TslBL::ChargeStateParams params,
                                                            std::unique_ptr<DeconSpectrum> spectrum) {
  lines_.Run(loaded);
  params.UseOPD = true;
  auto apart = Deconvolved(loaded, params);
  if (MergeCompanions(*apart, *loaded.spectrum)) apart = Deconvolved(loaded, params);
  if (!AreBetter(*apart, *spectrum)) return spectrum;
  ++linesApart_;
  return apart;
}

// Peaks of a protein are as wide as isotopes that run into each other: only where no series of charges is
// found they are taken for isotopes.
std::unique_ptr<DeconSpectrum> ChargeStates::WithIsotopesApart(LoadedSpectrum& loaded,
                                                               TslBL::ChargeStateParams params,
                                                               std::unique_ptr<DeconSpectrum> spectrum) {
  overlap_.Run(loaded);
  params.UseOPD = true;
  params.Method = TslBL::ChargeStateParams::ResolvedOnly;
  auto apart = Deconvolved(loaded, params);
  // Tops that are shifted make some series of their own.
  if (apart->Series.empty() || 5 * apart->Series.size() < 4 * spectrum->Series.size()) return spectrum;
  ++isotopesApart_;
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

std::vector<std::string> ChargeStates::Warnings() const {
  std::vector<std::string> warnings = overlap_.Warnings();
  std::ranges::move(molecules_.Warnings(), std::back_inserter(warnings));
  return warnings;
}

std::string ChargeStates::Note() const {
  const std::lock_guard lock(mutex_);
  std::string note =
      fmt::format("{} series in {} of {} spectra", series_.load(), withSeries_.load(), spectra_.load());
  if (wishes_.params.Method != TslBL::ChargeStateParams::UnresolvedOnly) {
    note += "; isotopes looked for at charges to ";
    note += leastMaxCharge_ == mostMaxCharge_ ? fmt::format("{}", mostMaxCharge_)
                                              : fmt::format("{} to {}", leastMaxCharge_, mostMaxCharge_);
  }
  if (isotopesApart_ > 0)
    note += fmt::format(", which overlap and were taken apart in {} of {} spectra", isotopesApart_.load(),
                        spectra_.load());
  if (linesApart_ > 0)
    note += fmt::format("; lines that overlap were taken apart in {} of {} spectra", linesApart_.load(),
                        spectra_.load());
  if (ofChance_ > 0)
    note += fmt::format("; {} of lists left out, as good ones come about by chance", ofChance_.load());
  return note;
}

}  // namespace TslTool
