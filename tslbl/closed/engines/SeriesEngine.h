#pragma once
// The engines of charge state deconvolution that find series: peaks of a spectrum that are one molecule at
// several charges. There are two of this interface. The resolved one works on peaks that are isotopes, the
// unresolved one on peaks of which each is a whole isotope pattern. Both are exchangeable components:
//
//   TslCommon::ComponentRegistry::Instance().Register(
//       TslMath::SeriesEngine::kResolvedClassId, [] { return std::make_unique<MyEngine>(); });
//
// The library makes one for each run and each edit that needs it, sets its parameters once, uses it on the
// calling thread alone, one call after the other, and gives it up at the end. Runs on several threads have
// one each.
//
// A call that fails throws ComError; the library then asks the same engine for GetLastError and shows that
// text to the user. A std::exception goes to the user with its own text.
//
// What goes in and out is an XML document with the root CSDecon. All values but one are attributes. A number
// is written in decimal with a point; a real number in the shortest form that reads back to the same double,
// such as 1.007276, 1e-06 or 1e+05 for 100000; one that is not finite as inf, -inf or nan. Attributes stand
// in the order given here, which an engine need not rely on. White space between elements has no meaning.
//
// SetPrefs of the resolved engine:
//
//   <CSDecon>
//     <ResPrefs snCutoff="3"               real: least signal to noise of a peak
//               resLow="1000"              real: lowest resolution
//               resHigh="5000"             real: highest resolution
//               minPatternScore="0.6"      real, 0 to 1: least score of an isotope pattern
//               zMax="3"                   integer: highest charge
//               maxGaps="0"                integer: most isotopes in a row that may be missing
//               tolerance="1000"           real: accuracy of m/z
//               adductMass="1.007276"      real: monoisotopic mass of the ion that carries the charge
//               csfTolerance="1000"        real: accuracy of a charge state
//               csfAllowableGaps="1"       integer: most charges in a row that may be missing in a series
//               scoreFunct="0"             integer: 0 sum of deviations, 1 cross-correlation
//               mmCalcFunc="0"             integer: monoisotopic mass of a series, 0 average, 1 weighted
//               atomicProbability="1e-06"  real: isotopes of an element that are rarer are left out
//               molecularProbability="1e-06"  real: the same of a molecule
//               csfMaxFamily="10">         integer: most series
//       <Formula>C117 H184 N32 O35 S1</Formula>   the average molecule
//     </ResPrefs>
//   </CSDecon>
//
// SetPrefs of the unresolved engine:
//
//   <CSDecon>
//     <UnresPrefs minMass="1000"                integer: lowest mass of a molecule
//                 maxMass="20000"               integer: highest mass
//                 chargeCarrierMass="1.007398"  real: average mass of the ion that carries the charge
//                 minSeriesSize="5"             integer: fewest charges in a series
//                 maxSeries="10"                integer: most series
//                 isotopicGaps="1"              integer: most charges in a row that may be missing
//                 massAccuracy="1000" />        real: accuracy of m/z
//   </CSDecon>
//
// AutoSeries, FindSeries and RecalcSeries are given the peaks of the spectrum:
//
//   <CSDecon>
//     <MZPeaks>
//       <Peak id="0" mz="500.5" ampl="120" area="30.25" sn="40" res="1500" />
//     </MZPeaks>
//   </CSDecon>
//
// `id` is an integer, the rest is real; `area` may also stand in `ampl`, if the user asks for that. The peaks
// come as the peak table has them, peaks that were fitted to overlapping ones behind the others: `id` need
// not be without gaps, and m/z need not ascend. For FindSeries and RecalcSeries a second element names the
// peaks to start from, and the average mass of the series so far, 0 for a new one:
//
//     <SeriesPeaks avgMass="0">
//       <Peak id="0" />
//     </SeriesPeaks>
//
// All three answer with the series that they found:
//
//   <CSDecon>
//     <Series avgMass="1999.1" stdDev="0.2">
//       <ChargeState charge="4" dev="0.01" monoPk="0" monoMass="1998">
//         <Peak id="0" />
//       </ChargeState>
//     </Series>
//   </CSDecon>
//
//   Series       avgMass   real: mass of the molecule, the mean over its charge states: of the average
//                          masses, in a resolved series of the monoisotopic ones
//                stdDev    real: its standard deviation
//   ChargeState  charge    integer: the charge of these peaks
//                dev       real: deviation of this charge state's mass from that of the series
//                monoPk    integer, 0 or more: the id of the peak of which dev and monoMass tell; in a
//                          resolved series the monoisotopic one. Without one, an id that none of its
//                          peaks has, such as 4294967295.
//                monoMass  real: the monoisotopic mass by this charge state
//   Peak         id        integer, 0 or more: a peak of this charge state, as it was given
//
// All attributes must be there. An answer without a Series says that nothing was found, which ends the run
// with a message. A resolved series without a monoisotopic peak is dropped, and so is an unresolved one of
// less than two peaks.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <string>

namespace TslMath {

class TSLBL_API SeriesEngine : public TslCommon::IComponent {
 public:
  static constexpr const char* kResolvedClassId = "TslBL.ResolvedSeriesEngine";
  static constexpr const char* kUnresolvedClassId = "TslBL.UnresolvedSeriesEngine";

  // What was wrong with the last call that failed, for the user.
  virtual std::wstring GetLastError() = 0;

  // Takes the parameters, a document with ResPrefs or UnresPrefs. Comes before all other calls.
  virtual void SetPrefs(const std::wstring& document) = 0;

  // Finds all series among the peaks.
  virtual std::wstring AutoSeries(const std::wstring& document) = 0;
  // Finds the one series that has the peaks named.
  virtual std::wstring FindSeries(const std::wstring& document) = 0;
  // Works out anew a series that exists and whose peaks were changed by the user. Of several series in the
  // answer the last valid one counts.
  virtual std::wstring RecalcSeries(const std::wstring& document) = 0;
};

// Puts the library's own engines back in the place of others: those of FindAllSpecies and FindAllSeries. They
// take `ampl` for the intensity of a peak and `area` for its ions. RecalcSeries takes the peaks named and no
// others of an unresolved series; of a resolved one all isotopes around them. Where the monoisotopic peak is
// too weak to be seen, monoPk names the lightest one that is.
TSLBL_API void RegisterOwnSeriesEngines();

}  // namespace TslMath
