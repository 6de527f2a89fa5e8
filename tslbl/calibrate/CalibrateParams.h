#pragma once
// What a mass calibration goes by: the calibrants of a known substance, and how far from its m/z the peak of
// one is looked for.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct Calibrant {
  std::wstring Name;
  double MZ = 0.0;

  bool operator==(const Calibrant&) const = default;
};

// Version 2. Version 1 has no name.
struct TSLBL_API CalibrateParams : SerialRecord<CalibrateParams> {
  std::vector<Calibrant> calibrants;
  std::wstring Name;       // of the set
  double tolerance = 1.0;  // to either side of a calibrant, m/z
  std::uint32_t mode = 1;  // kept for the caller
};

TSLBL_API void Describe(Archive& ar, CalibrateParams& params);

}  // namespace TslBL
