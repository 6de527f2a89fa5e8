#pragma once
// What goes to the engines of charge state deconvolution and comes back, as DeconXMLParser.h puts it into
// documents. The names are those of the attributes, which closed/engines/SeriesEngine.h explains.
//
// For the sources of the library; not part of its interface.

#include <tslbl/chargestate/ChargeStateParams.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct ResPrefs {
  double snCutoff;
  double resLow;
  double resHigh;
  double minPatternScore;
  std::uint32_t zMax;
  std::uint32_t maxGaps;
  double tolerance;
  double adductMass;
  double csfTolerance;
  std::uint32_t csfAllowableGaps;
  std::uint32_t scoreFunct;
  std::uint32_t mmCalcFunc;
  double atomicProbability;
  double molecularProbability;
  std::uint32_t csfMaxFamily;
  std::wstring formula;
};

struct UnresPrefs {
  std::uint32_t minMass;
  std::uint32_t maxMass;
  double chargeCarrierMass;
  std::uint32_t minSeriesSize;
  std::uint32_t maxSeries;
  std::uint32_t isotopicGaps;
  double massAccuracy;
};

// The resolved engine counts with the monoisotopic mass of the adduct ion, the unresolved one with the
// average.
ResPrefs MakeResPrefs(const ChargeStateParams& params);
UnresPrefs MakeUnresPrefs(const ChargeStateParams& params);

// A peak as the engines are given it.
struct PeakRow {
  std::uint32_t Id = 0;  // spectrum peak id
  double Mz = 0.0;
  double Ampl = 0.0;
  double Area = 0.0;
  double SN = 0.0;
  double Res = 0.0;

  bool operator==(const PeakRow&) const = default;
};

struct PlotPoint {
  double x;
  double y;

  bool operator==(const PlotPoint&) const = default;
};

// A series as an engine found it.
struct FoundSeries {
  struct ChargeState {
    std::int32_t charge;
    double dev;
    std::uint32_t monoPk;  // the peak of which dev and monoMass tell
    double monoMass;
    std::vector<std::uint32_t> peakIds;
  };
  double avgMass;
  double stdDev;
  std::vector<ChargeState> chargeStates;
};

}  // namespace TslBL
