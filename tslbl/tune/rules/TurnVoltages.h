#pragma once
// The voltages that follow the sign of the ions.
//
// For the sources of this room; not part of the library's interface.

#include <tslbl/tune/Tune.h>
#include <vector>

namespace TslBL {

// Each turns the sign of those that stand here. A lens keeps its calibrated value and its
// step size; of a calibration point the fields that may follow m/z turn.
void TurnVoltages(IonSource& source);
void TurnVoltages(Control& control);
void TurnVoltages(std::vector<Q1CalPt>& points);

}  // namespace TslBL
