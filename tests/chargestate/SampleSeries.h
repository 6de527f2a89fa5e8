#pragma once
// Series in a notation: "5 6 7m" are peaks at these charges, with ids 0, 1, 2 ..., of which the last one is
// monoisotopic.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

using namespace TslBL;

inline std::vector<CSSeriesPeakInfo> PeaksAt(const std::string& charges, std::uint32_t firstId = 0) {
  std::vector<CSSeriesPeakInfo> peaks;
  std::istringstream in(charges);
  for (std::string charge; in >> charge;) {
    CSSeriesPeakInfo& peak = peaks.emplace_back();
    peak.PeakId = firstId++;
    peak.Charge = static_cast<std::uint32_t>(std::stoul(charge));
    peak.IsMonoPeak = charge.back() == 'm';
  }
  return peaks;
}

// As "R1 U1 U2".
inline std::string Keys(const DeconSpectrum& spectrum) {
  std::ostringstream out;
  for (const CSSeries& key : spectrum.QCSSeriesArray())
    out << (out.tellp() > 0 ? " " : "") << "0RU"[key.Type] << key.Id;
  return out.str();
}

constexpr auto kResolved = CSSeries::Resolved;
constexpr auto kUnresolved = CSSeries::Unresolved;

// Resolved 1, unresolved 1, resolved 2.
inline DeconSpectrum WithThreeSeries() {
  DeconSpectrum s;
  s.CSAddSeries(kResolved, 1000.0, 0.5, PeaksAt("1m 2"));
  s.CSAddSeries(kUnresolved, 2000.0, 0.25, PeaksAt("5 6 6", 2));
  s.CSAddSeries(kResolved, 3000.0, 0.125, PeaksAt("3 4m", 5));
  return s;
}

}  // namespace tests
