#include <tslbl/spectrum/Spectrum.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/records/Archive.h>
#include <stdexcept>
#include <utility>

namespace TslBL {
namespace {

constexpr std::uint32_t kVersion = 1;
constexpr const char* kUnknownVersion = "Unknown Spectrum version.";

void DescribeBody(Archive& ar, Spectrum& spectrum) {
  Describe(ar, static_cast<Curve&>(spectrum));
  ar(L"tuneId", spectrum.tuneId);
  ar.List(L"tuneMZCalPts", spectrum.tuneMZCalPts);
  ar.List(L"appliedMZCalPts", spectrum.appliedMZCalPts);
  ar(L"startMDAC", spectrum.startMDAC);
  ar(L"stepMDAC", spectrum.stepMDAC);
  ar(L"timeStamp", spectrum.timeStamp);
  ar(L"tic", spectrum.tic);
  ar.Nested(spectrum.opdParams);
  ar.List(L"overlapPeaks", spectrum.overlapPeaks);
}

void DescribeBodyErased(Archive& ar, void* spectrum) { DescribeBody(ar, *static_cast<Spectrum*>(spectrum)); }

}  // namespace

Spectrum::Spectrum() {
  smoothParams = SmoothParams::DefaultMS();
  baselineParams = BaselineParams::DefaultMS();
  noiseParams = NoiseParams::DefaultMS();
  peakDetectParams = PeakDetectParams::DefaultMS();
}

Curve* Spectrum::Clone() const { return new Spectrum(*this); }

void Describe(Archive& ar, Spectrum& spectrum) {
  ar.Version(kVersion, kUnknownVersion);
  DescribeBody(ar, spectrum);
}

void Spectrum::Serialize(BinaryReader& reader) {
  std::uint32_t version = 0;
  reader >> version;
  if (version != kVersion) throw std::runtime_error(kUnknownVersion);
  ReadVerCur(reader);
}

void Spectrum::ReadVerCur(BinaryReader& reader) {
  Spectrum fresh;
  frame::ReadBinary(&DescribeBodyErased, &fresh, reader);
  *this = std::move(fresh);
}

void Spectrum::Serialize(BinaryWriter& writer) const {
  frame::WriteBinary(&frame::DescribeErased<Spectrum>, this, writer);
}

bool operator==(const Spectrum& a, const Spectrum& b) {
  return &a == &b || frame::Equal(&frame::DescribeErased<Spectrum>, &a, &b);
}

}  // namespace TslBL
