#pragma once
// Molecules in a list of peaks whose isotopes are resolved: their charges and monoisotopic masses.
//
// The isotopes of one molecule at charge z stand about 1 / z apart, in proportions that follow from what it
// is made of. A pattern of the average molecule is laid on each peak, for every charge; the one that explains
// most is taken off the list, and so on. Patterns of one mass at several charges are one species.
//
// At a width of 0.6 m/z only charge 1 has peaks that stand apart; no list of such peaks tells higher charges.
//
// Sources: D. Horn, R. Zubarev, F. McLafferty, Automated reduction and interpretation of high resolution
// electrospray mass spectra of large molecules, 2000; M. Senko, S. Beu, F. McLafferty, Determination of
// monoisotopic masses and ion populations for large biomolecules from resolved isotopic distributions, 1995.
#include <tslbl/Export.h>
#include <tslbl/closed/engines/IsotopePattern.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace TslMath {

// How alike intensities and a pattern are, 0 to 1.
enum class PatternScore {
  SumOfDeviations,   // 1 - sum |observed - expected| / sum of the larger of both
  CrossCorrelation,  // sum observed expected / root (sum observed^2 sum expected^2)
};

enum class MassMean { Plain, Weighted };  // by intensity

struct ResolvedPrefs {
  double leastSignalToNoise = 3.0;   // peaks below are left out; it also says which isotopes could be seen
  double lowestResolution = 1000.0;  // peaks below and beyond are left out
  double highestResolution = 5000.0;
  double leastScore = 0.6;  // of a pattern
  std::int32_t maxCharge = 3;
  std::int32_t maxIsotopeGaps = 0;  // isotopes in a row that may be missing in a pattern
  double accuracy = 1000.0;         // ppm of m/z for an isotope's place; never more than 0.25 m/z / charge
  double carrierMass = 1.007276;    // Da, signed
  double massAccuracy = 1000.0;     // ppm of mass between the charges of a species
  std::int32_t maxChargeGaps = 1;   // charges in a row that may be missing in a species
  PatternScore score = PatternScore::SumOfDeviations;
  MassMean mean = MassMean::Plain;  // over isotopes, and over charges
  Composition averageMolecule = ParseFormula("C117 H184 N32 O35 S1");
  IsotopeThresholds thresholds;
  std::int32_t maxSpecies = 10;  // at most so many, the most intense
};

struct MatchedIsotope {
  std::int32_t isotope;  // neutrons more than in the monoisotopic form
  std::size_t peak;      // index in the list
};

// The isotopes of a species at one charge.
struct IsotopeState {
  std::int32_t charge = 0;
  double monoMass = 0;                   // Da, neutral, by these peaks
  double deviation = 0;                  // Da, of this mass from the species'
  double score = 0;                      // by the function of the preferences
  std::vector<MatchedIsotope> isotopes;  // ascending

  // The peak at the monoisotopic place; large molecules have none that can be seen.
  std::optional<std::size_t> MonoPeak() const;
};

struct Species {
  double monoMass = 0;               // Da, neutral
  double standardDeviation = 0;      // Da, of the charges' masses; 0 of one charge
  double intensity = 0;              // sum of all peaks
  std::vector<IsotopeState> states;  // ascending charge
};

// All species, the most intense first. Of peaks nearer to each other than a quarter of the least width, m/z
// by `highestResolution`, only the strongest counts. Rows whose m/z is not above 0 and below a million,
// or whose intensity is not from 1e-100 to 1e100, are left out. Indexes are those of `peaks`, in any order.
//
// Throws std::invalid_argument for preferences that say nothing: numbers that are not finite, an accuracy
// that is not above 0, a highest charge below 1, gaps below 0, resolutions that cross, an average molecule
// without atoms. Threads: nothing is shared.
TSLBL_API std::vector<Species> FindAllSpecies(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs);

// The species that these peaks belong to, with whatever other isotopes and charges it has: that of the best
// pattern that holds most of the seeds. Nothing if no pattern passes.
TSLBL_API std::optional<Species> FindSpeciesOf(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs,
                                               std::span<const std::size_t> seeds);

// A species of about this monoisotopic mass with a state for each charge that these peaks have, at which the
// isotopes around them are matched anew, however poor the score. Nothing if no peak is of any use, or the
// mass is not above 0.
TSLBL_API std::optional<Species> RecalculateSpecies(std::span<const IonPeak> peaks,
                                                    const ResolvedPrefs& prefs, double monoMass,
                                                    std::span<const std::size_t> members);

// How far each monoisotopic mass may be off because isotopes were counted wrongly, Da: root mean square over
// the counts, as likely as all peaks of the list make them. `species` are of this list, the most intense
// first. Below 5 kDa the lightest isotopes can be seen, and it is 0; of larger ones the pattern of the
// average molecule has to tell, from which proteins differ, so that even perfect spectra leave 0.03 Da on
// average at 10 kDa and 0.26 Da at 29 kDa. Throws as FindAllSpecies does.
TSLBL_API std::vector<double> CountErrors(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs,
                                          std::span<const Species> species);

}  // namespace TslMath
