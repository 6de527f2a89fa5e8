#include <tslbl/chromatogram/ICObj.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/records/Archive.h>
#include <utility>

namespace TslBL {

ICObj::ICObj() {
  smoothParams = SmoothParams::DefaultIC();
  baselineParams = BaselineParams::DefaultIC();
  noiseParams = NoiseParams::DefaultIC();
  peakDetectParams = PeakDetectParams::DefaultIC();
}

Curve* ICObj::Clone() const { return new ICObj(*this); }

void Describe(Archive& ar, ICObj& obj) {
  ar.Version(1, "Unknown ICObj version.");
  Describe(ar, static_cast<Curve&>(obj));
}

void ICObj::Serialize(BinaryReader& reader) {
  ICObj fresh;
  frame::ReadBinary(&frame::DescribeErased<ICObj>, &fresh, reader);
  *this = std::move(fresh);
}

void ICObj::Serialize(BinaryWriter& writer) const {
  frame::WriteBinary(&frame::DescribeErased<ICObj>, this, writer);
}

bool operator==(const ICObj& a, const ICObj& b) {
  return &a == &b || frame::Equal(&frame::DescribeErased<ICObj>, &a, &b);
}

}  // namespace TslBL
