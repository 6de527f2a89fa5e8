#include <tslbl/curve/PeakInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, PeakInfo& p) {
  ar.Version(1, "Unknown PeakInfo version.");
  ar(L"startIdx", p.startIdx);
  ar(L"apexIdx", p.apexIdx);
  ar(L"apexAmpl", p.apexAmpl);
  ar(L"endIdx", p.endIdx);
  ar(L"maxIdx", p.maxIdx);
  ar(L"maxAmpl", p.maxAmpl);
  ar(L"maxBaseline", p.maxBaseline);
  ar(L"centroidIdx", p.centroidIdx);
  ar(L"centroidAmpl", p.centroidAmpl);
  ar(L"baselineAmpl", p.baselineAmpl);
  ar(L"halfHeightLeftIdx", p.halfHeightLeftIdx);
  ar(L"halfHeightRightIdx", p.halfHeightRightIdx);
  ar(L"areaIntercept", p.areaIntercept);
  ar(L"areaStartIdx", p.areaStartIdx);
  ar(L"areaEndIdx", p.areaEndIdx);
  ar(L"area", p.area);
  ar(L"noiseAmpl", p.noiseAmpl);
  ar(L"useMax", p.useMax);
  ar(L"overlapGroup", p.overlapGroup);
}

void PeakInfo::Serialize(BinaryReader& reader) {
  PeakInfo fresh;
  frame::ReadBinary(&frame::DescribeErased<PeakInfo>, &fresh, reader);
  *this = fresh;
}

void PeakInfo::Serialize(BinaryWriter& writer) const {
  frame::WriteBinary(&frame::DescribeErased<PeakInfo>, this, writer);
}

bool operator==(const PeakInfo& a, const PeakInfo& b) {
  return &a == &b || frame::Equal(&frame::DescribeErased<PeakInfo>, &a, &b);
}

}  // namespace TslBL
