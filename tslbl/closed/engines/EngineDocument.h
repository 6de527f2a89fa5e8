#pragma once
// The documents of SeriesEngine.h and MassPlotEngine.h, as our own engines read and write them.
//
// All reading throws std::runtime_error with a text that names the element, the attribute and the value that
// is missing or no number.
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>
#include <tslbl/closed/math/chargestate/MassPlot.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <cstdint>
#include <string>
#include <vector>

namespace TslMath {

// The peaks of a document, with their ids, and those to start from as indexes among them. An id that no peak
// has is left out.
struct PeakDocument {
  std::vector<IonPeak> peaks;  // `ampl` is the intensity
  std::vector<std::uint32_t> ids;
  std::vector<std::size_t> seeds;
  double seedMass = 0;  // avgMass
};

struct ProfileDocument {
  std::vector<double> x;
  std::vector<double> y;
  double carrierMass = 0;
  std::int32_t charge = 0;
};

// What a series reply holds.
struct ReplyState {
  std::int32_t charge;
  double deviation;
  std::size_t monoPeak;  // index of the peak of which mass and deviation tell
  double monoMass;
  std::vector<std::size_t> peaks;
};
struct ReplySeries {
  double mass;
  double standardDeviation;
  std::vector<ReplyState> states;
};

ResolvedPrefs ReadResolvedPrefs(const std::wstring& document);
UnresolvedPrefs ReadUnresolvedPrefs(const std::wstring& document);
PeakDocument ReadPeaks(const std::wstring& document);
ProfileDocument ReadProfile(const std::wstring& document);
MassCurve ReadMassCurve(const std::wstring& document);

std::wstring WriteSeries(const std::vector<ReplySeries>& series, const std::vector<std::uint32_t>& ids);
std::wstring WriteMassCurve(const MassCurve& curve);

}  // namespace TslMath
