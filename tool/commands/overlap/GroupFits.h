#pragma once
// The fits of the groups of a spectrum once more, with what the library's rows have no place for: the
// amplitude of a count, and the skew that the peaks of a group share.

#include <tool/io/SpectrumSource.h>
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace TslTool {

// The points of a group, those of its data peaks.
struct GroupSpan {
  std::size_t first;
  std::size_t last;
};

GroupSpan SpanOf(const TslBL::Spectrum& spectrum, std::uint32_t group);

// The variance of a fitted point divided by its mean, as counts have it; 0 where it is not known.
double VariancePerMeanOf(const LoadedSpectrum& loaded);

// The fit of a group from where its fitted peaks are, by the spectrum's method; x is the number of the point
// in the group. Nothing if it leads elsewhere, as to another place of a peak.
std::optional<TslMath::OverlapFit> FitOfGroup(const LoadedSpectrum& loaded, std::uint32_t group,
                                              double variancePerMean);

// Where the noise of the fitted points is known, fits anew with it: errors and chi2 of few points are only as
// good as the noise that they rest on. The spectrum holds the points as the chain left them.
void FitWithKnownNoise(LoadedSpectrum& loaded);

}  // namespace TslTool
