#include <tslbl/chargestate/DeconSpectrum.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/records/Archive.h>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr std::uint32_t kVersion = 1;
constexpr const char* kUnknownVersion = "Unknown DeconSpectrum version.";

std::uint32_t ReadWord(BinaryReader& reader) {
  std::uint32_t word = 0;
  reader >> word;
  return word;
}

}  // namespace

DeconSpectrum::DeconSpectrum(const Spectrum& spectrum) : Spectrum(spectrum) {}

Curve* DeconSpectrum::Clone() const { return new DeconSpectrum(*this); }

void Describe(Archive& ar, DeconSpectrum& spectrum) {
  ar.Version(kVersion, kUnknownVersion);
  Describe(ar, static_cast<Spectrum&>(spectrum));
  ar.Nested(spectrum.CSParams);
  ar.List(L"Series", spectrum.Series);
  ar(L"MassX", spectrum.MassX);
  ar(L"MassY", spectrum.MassY);
}

void DeconSpectrum::Serialize(BinaryReader& reader) {
  if (ReadWord(reader) != kVersion) throw std::runtime_error(kUnknownVersion);
  ReadVerCur(reader);
}

// The spectrum inside begins with a version word too, behind which what is read is again a deconvolved
// spectrum: so it goes on to the first word that is no version.
void DeconSpectrum::ReadVerCur(BinaryReader& reader) {
  while (ReadWord(reader) == kVersion) continue;
  throw std::runtime_error("Unknown Spectrum version.");
}

void DeconSpectrum::Serialize(BinaryWriter& writer) const {
  frame::WriteBinary(&frame::DescribeErased<DeconSpectrum>, this, writer);
}

bool operator==(const DeconSpectrum& a, const DeconSpectrum& b) {
  return &a == &b || frame::Equal(&frame::DescribeErased<DeconSpectrum>, &a, &b);
}

}  // namespace TslBL
