#pragma once
// What a new tune holds.
//
// For the sources of this room; not part of the library's interface.

#include <tslbl/tune/Tune.h>
#include <vector>

namespace TslBL {

// Named "New Tune", saved now.
TuneInfo DefaultTuneInfo();
// A scan of the whole m/z range for positive ions, all lenses single. The initial settling
// delay is left for whoever knows the capillary exit.
Control DefaultControl();
// Voltages with the sign for ions of this polarity.
IonSource DefaultIonSource(Probes::ProbeTypes probe, PolarityTypes polarity);
// A straight line over the m/z limits of the site.
std::vector<MZCalPt> DefaultMZCalPts();
// Five calibrants with a value for each field that can follow m/z.
std::vector<Q1CalPt> DefaultQ1CalPts();

}  // namespace TslBL
