#pragma once
// How high one ion is in a curve, and how many there are in its background; or how high the noise was of
// which only what exceeds a threshold is left.
#include <tslbl/closed/math/baseline/CurveFloor.h>
#include <tslbl/closed/math/baseline/Polyline.h>

#include <cstddef>
#include <vector>

namespace TslMath {

// The background of the points begin .. end-1.
struct IonBackground {
  std::size_t begin;
  std::size_t end;
  double onFloor;  // part of its points
  double mean;     // above the floor
};

struct FloorBumps {
  double ion = 0.0;             // the height of one ion above the floor; 0 if the bumps are no ions
  std::vector<Knot> threshold;  // what all noise that is left exceeds; empty if they are no such noise either
};

// What stands on the floor, and the mean of each segment's background. `segment` is the length that the
// segments are about; peaks and the points within a twentieth of it on either side are left out. `quantum` is
// the smallest step of the data. There is neither where there are fewer than 8 bumps, and no threshold where
// there are fewer than 32. Ions that stand alone are equally high, or multiples: where fewer than 200 bumps
// are not, they are lines without noise, and there is neither.
FloorBumps JudgeBumps(const double* y, std::size_t n, const CurveFloor& floor, std::size_t segment,
                      double quantum, std::vector<IonBackground>& segments);

}  // namespace TslMath
