#pragma once
// Peaks that are made of a single point, as cosmic rays and electronics leave them.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <optional>

namespace TslTool {

// Takes peaks from an evaluated spectrum whose highest point rises by four fifths of its height above the
// baseline over both its neighbours, and this with certainty: five times what noise and the counting of ions
// could make of it. A line of one and a half points across is still wider than that. A neighbour of 0
// counts as the lowest amplitude above 0, since a program may have left out what was lower. Returns how many.
// Nothing is taken from a spectrum that was smoothed over less than five points, or with another filter than
// QFilterWeights knows: its lines may be as narrow.
std::size_t LeaveOutSpikes(LoadedSpectrum& loaded);

// The m/z of the highest peak that is a spike by that measure, if there are three or more of them and a peak
// of four points or more among the others, so that peaks can be told from spikes.
std::optional<double> SpikeAmongPeaks(const LoadedSpectrum& loaded);

}  // namespace TslTool
