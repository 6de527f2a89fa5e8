#pragma once
// A row of a curve's peak table. Positions are point indexes; those of the fitted peak are
// fractional: 10.25 lies a quarter of the way from point 10 to point 11.

#include <tslbl/Export.h>
#include <tslbl/records/Common.h>
#include <cstdint>

namespace TslCommon {
class BinaryReader;
class BinaryWriter;
}  // namespace TslCommon

namespace TslBL {

class Archive;

inline constexpr std::uint32_t NoOverlapGroupId = 0;

struct TSLBL_API PeakInfo {
  std::uint32_t startIdx = 0;  // first point
  std::uint32_t apexIdx = 0;   // the apex as detected
  double apexAmpl = 0.0;       // amplitude there
  std::uint32_t endIdx = 0;    // last point
  double maxIdx = 0.0;         // maximum of the fitted peak
  double maxAmpl = 0.0;
  double maxBaseline = 0.0;  // equal to baselineAmpl
  double centroidIdx = 0.0;
  double centroidAmpl = 0.0;
  double baselineAmpl = 0.0;  // baseline at the centroid
  double halfHeightLeftIdx = 0.0;
  double halfHeightRightIdx = 0.0;
  double areaIntercept = 0.0;  // the level above which the peak was integrated
  double areaStartIdx = 0.0;   // the integration limits
  double areaEndIdx = 0.0;
  double area = 0.0;
  double noiseAmpl = 0.0;
  bool useMax = false;  // the peak's position is its maximum, otherwise its centroid
  std::uint32_t overlapGroup = NoOverlapGroupId;

  // The fractional index and the amplitude at which the peak is reported.
  double ReportedIdx() const { return useMax ? maxIdx : centroidIdx; }
  double ReportedAmpl() const { return useMax ? maxAmpl : centroidAmpl; }

  void Serialize(BinaryReader& reader);
  void Serialize(BinaryWriter& writer) const;

  friend TSLBL_API bool operator==(const PeakInfo& a, const PeakInfo& b);
  friend bool operator<(const PeakInfo& a, const PeakInfo& b) { return a.apexIdx < b.apexIdx; }
};
TSLBL_API void Describe(Archive& ar, PeakInfo& p);

}  // namespace TslBL
