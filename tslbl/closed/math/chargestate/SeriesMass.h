#pragma once
// The mass of a series from its members, and how uncertain it is.
#include <tslbl/closed/math/chargestate/ChargeSeries.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <span>

namespace TslMath {

// Sets masses, deviations and the three numbers of the series from the charges and peaks of its members.
//
// The error of a place in m/z has a part that is alike for all peaks, from neighbours and from the axis, and
// one from counting ions: width^2 / area. What share each has is read from the scatter itself, by likelihood
// over a few shares, each of which counts as much as it explains. An error in m/z becomes one in mass times
// the charge. Members farther than 2.5 standard deviations off, as where a neighbour shifts a peak, weigh
// less by the square of how much farther, so that the farthest have no say: F. Hampel, E. Ronchetti, P.
// Rousseeuw, W. Stahel, Robust statistics, 1986.
//
// An error that all peaks have in common, such as that of the calibration, shows in no scatter: the standard
// error is without it.
void UpdateMass(std::span<const IonPeak> peaks, double carrierMass, ChargeSeries& series);

}  // namespace TslMath
