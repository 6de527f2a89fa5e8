#pragma once
// The curve of one lens over m/z, and its editing after a ramp.

#include <tslbl/Export.h>
#include <tslbl/tune/TuneField.h>
#include <cstdint>
#include <map>
#include <set>

namespace TslBL {

struct TSLBL_API ByLens {
  TuneField::Id Field = TuneField::SourceType;
  std::map<double, double> Values;  // by m/z

  bool operator==(const ByLens&) const = default;
};

// Points near to one another in m/z are one calibrant. An m/z that is NaN changes nothing.
class TSLBL_API ByLensFct {
 public:
  explicit ByLensFct(const ByLens& lens) : lens_(lens) {}

  ByLens QByLens() const { return lens_; }

  // Sets a point in the place of those nearby.
  void AddMassValue(double mz, double value);
  // Removes the points from 3 m/z below to 4 m/z above, if the first of them is within 3 m/z.
  void RemoveNearbyPoints(double mz);
  // Removes the first point above this whole m/z, if it is below the next whole one. A point at the whole m/z
  // itself stays.
  void RemoveNominalMass(std::int32_t mass);
  // Keeps of each of these whole m/z the first point from it on to the next one, and nothing else.
  void KeepNominalMasses(const std::set<std::int32_t>& masses);

 private:
  static constexpr double kTolerance = 3.0;  // m/z

  ByLens lens_;
};

}  // namespace TslBL
