#pragma once
// Small spectra for the tests, and a notation for overlap groups.

#include <tslbl/spectrum/Spectrum.h>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

using TslBL::OverlapPeakInfo;
using TslBL::PeakInfo;
using TslBL::Spectrum;

// Points at m/z 100, 101, 102 ... with a baseline of 1 and a noise of 2 everywhere.
inline Spectrum SpectrumOf(const std::vector<double>& y) {
  Spectrum s;
  s.yAxis = y;
  for (std::size_t i = 0; i < y.size(); ++i) s.xAxis.push_back(100.0 + static_cast<double>(i));
  s.baseline.assign(y.size(), 1.0);
  s.noise.assign(y.size(), 2.0);
  s.AddStatus(Spectrum::STATUS_Y);
  s.AddStatus(Spectrum::STATUS_X);
  return s;
}

// A spectrum with data peaks that cover ten points each: 0 to 9, 10 to 19 and so on.
inline Spectrum SpectrumWithPeaks(std::uint32_t count) {
  Spectrum s = SpectrumOf(std::vector<double>(10 * count + 10, 3.0));
  for (std::uint32_t i = 0; i < count; ++i) {
    PeakInfo& row = s.peaks.emplace_back();
    row.startIdx = 10 * i;
    row.apexIdx = 10 * i + 5;
    row.endIdx = 10 * i + 9;
  }
  return s;
}

// Overlap peaks from "group:dataPeak@position ...", and back.
inline std::vector<OverlapPeakInfo> Fits(const std::string& text) {
  std::vector<OverlapPeakInfo> fits;
  std::istringstream in(text);
  OverlapPeakInfo fit;
  for (char colon, at; in >> fit.GroupId >> colon >> fit.DataPeakId >> at >> fit.Position;)
    fits.push_back(fit);
  return fits;
}

inline std::string Text(const std::vector<OverlapPeakInfo>& fits) {
  std::ostringstream out;
  for (const OverlapPeakInfo& fit : fits)
    out << (&fit == fits.data() ? "" : " ") << fit.GroupId << ':' << fit.DataPeakId << '@' << fit.Position;
  return out.str();
}

// The groups of the data peaks, such as "0 1 1 2".
inline std::string RowGroups(const Spectrum& s) {
  std::ostringstream out;
  for (const PeakInfo& row : s.peaks) out << (&row == s.peaks.data() ? "" : " ") << row.overlapGroup;
  return out.str();
}

}  // namespace tests
