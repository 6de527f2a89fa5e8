#pragma once
// Series of charge states in a list of peaks whose isotopes are not resolved: a molecule of mass M at charge
// z, carried by z carriers of mass a, has a peak at M / z + a for each of many charges in a row.
//
// A series is told from chance by likelihood, from the places and strengths of the peaks alone; foreign
// peaks, missing charges, several molecules and their adducts in one list are what it is made for. The
// scatter of the places is read from the series itself, so that `accuracy` is a limit and no estimate. A half
// or third of a mass explains a part of the peaks; it is not taken where the charges between have peaks too.
//
// Sources: M. Mann, C. Meng, J. Fenn, Interpreting mass spectra of multiply charged ions, 1989; Z. Zhang,
// A. Marshall, A universal algorithm for fast and automated charge state deconvolution of electrospray
// mass-to-charge ratio spectra, 1998.
#include <tslbl/Export.h>
#include <tslbl/closed/math/chargestate/ChargeSeries.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace TslMath {

struct UnresolvedPrefs {
  double minMass = 1000.0;  // Da, neutral: what is found lies within these two
  double maxMass = 20000.0;
  double carrierMass = 1.007398;   // Da, signed
  std::int32_t minSeriesSize = 5;  // least number of peaks that no stronger series has; 2 at least
  std::int32_t maxSeries = 10;     // at most so many, those with most evidence
  std::int32_t maxGaps = 1;        // charges in a row that may lack a peak
  double accuracy = 1000.0;        // ppm of m/z: a peak farther off its place does not belong
};

// All series, those with most evidence first. They are looked for at charges whose places are five times
// `accuracy` apart or more (199 and less with 1000 ppm), and followed to higher ones as far as their own
// scatter tells places apart, at most 400; 400 peaks are tried as a start, the strongest. What has two or
// three times the mass of a series found, and shares its charges, needs three peaks of its own; what has half
// or a third, and no peak that the series has not, stands behind all others if the intensities show it.
// Rows whose m/z or intensity is not finite and above 0 are left out. Indexes are those of `peaks`, in any
// order.
//
// Throws std::invalid_argument for preferences that say nothing: masses, carrier or accuracy that are not
// finite, an accuracy or lowest mass that is not above 0, masses that cross, gaps below 0. Of any list the
// answer takes less than some seconds. Threads: nothing is shared.
TSLBL_API std::vector<ChargeSeries> FindAllSeries(std::span<const IonPeak> peaks,
                                                  const UnresolvedPrefs& prefs);

// The series that these peaks belong to, with whatever others it has, however small it is: the likeliest one
// that holds all of `seeds`, or else most. Nothing if no charges put the seeds on one mass within the limits.
TSLBL_API std::optional<ChargeSeries> FindSeriesOf(std::span<const IonPeak> peaks,
                                                   const UnresolvedPrefs& prefs,
                                                   std::span<const std::size_t> seeds);

// Exactly these peaks, each once, at the charge that brings it nearest to `mass`. Nothing if there is none,
// or the mass is not above 0.
TSLBL_API std::optional<ChargeSeries> RecalculateSeries(std::span<const IonPeak> peaks,
                                                        const UnresolvedPrefs& prefs, double mass,
                                                        std::span<const std::size_t> members);

}  // namespace TslMath
