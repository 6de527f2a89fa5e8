#pragma once
// How uncertain the places and areas of fitted peaks are.
#include <tslbl/closed/math/overlap/Cholesky.h>
#include <tslbl/closed/math/overlap/FitError.h>
#include <tslbl/closed/math/overlap/FitTask.h>

#include <span>
#include <vector>

namespace TslMath {

// One standard deviation for each peak, from the curvature of the squares at the fitted sum. `noise` is the
// variance of a point times its weight. Empty if the points do not determine all free numbers.
// Source: D. Lenz, T. Ayres, Errors associated with fitting Gaussian profiles to noisy emission-line spectra,
// 1992.
std::vector<FitError> ErrorsOf(const PeakSum& sum, const TermOrder& order, const FitEquations& equations,
                               double noise);

// The free numbers of a sum that its points say nothing about: those of peaks without height.
std::vector<char> UndeterminedTerms(const PeakSum& sum, const TermOrder& order);

// By how much neighbouring residuals that resemble each other multiply the variance of what is fitted, as
// those of a smoothed curve do, or of a sum that cannot follow the points: 1 for residuals that are
// independent.
double CorrelationFactor(std::span<const double> residuals);

}  // namespace TslMath
