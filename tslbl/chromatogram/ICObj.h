#pragma once
// A chromatogram: a curve over time with a point for each spectrum. sourceListA has the id of the spectrum
// that gave each point. Whoever acquires or reads a run builds it; its evaluation parameters are the presets
// for chromatograms, those of the threshold the defaults.
//
// A value, copied deep; one thread at a time may change it.

#include <tslbl/Export.h>
#include <tslbl/curve/Curve.h>

namespace TslBL {

class TSLBL_API ICObj : public Curve {
 public:
  ICObj();

  Curve* Clone() const override;

  // Version 1. A failed reading leaves the chromatogram as it was.
  using Curve::Serialize;
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;

  friend TSLBL_API bool operator==(const ICObj& a, const ICObj& b);
};

// The fields of its curve.
TSLBL_API void Describe(Archive& ar, ICObj& obj);

}  // namespace TslBL
