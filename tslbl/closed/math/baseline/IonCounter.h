#pragma once
// How high one ion is in a curve, and how many there are in its background.
#include <tslbl/closed/math/baseline/CurveFloor.h>

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

// The height of one ion above the floor, and the mean of each segment's background; 0 if the curve shows no
// ions. `segment` is the length that the segments are about; peaks and the points within a twentieth of it
// on either side are left out.
double CountIons(const double* y, std::size_t n, const CurveFloor& floor, std::size_t segment,
                 std::vector<IonBackground>& segments);

}  // namespace TslMath
