#pragma once
// Writes small mzML texts for tests: base64, zlib and MS-Numpress encoders, written after the published
// formats (RFC 4648; J. Teleman et al., Numerical compression schemes for proteomics mass spectrometry data,
// 2014).

#include <zlib.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

using Values = std::vector<double>;

inline std::string Base64(std::string_view bytes) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += i + k > bytes.size() ? '=' : kLetters[group >> (18 - 6 * k) & 63];
    }
  }
  return text;
}

inline std::string Deflate(std::string_view bytes) {
  uLongf size = compressBound(bytes.size());
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
           bytes.size());
  packed.resize(size);
  return packed;
}

template <class Number>
std::string BytesOf(const Values& values) {
  std::string bytes;
  for (const double value : values) {
    const Number number = static_cast<Number>(value);
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
  }
  return bytes;
}

// The scale that heads linear and slof data: a double, most significant byte first.
inline std::string FixedPoint(double scale) {
  const std::string bytes = BytesOf<double>({scale});
  return std::string(bytes.rbegin(), bytes.rend());
}

// Half bytes: how many leading zeros (n) or f's (8 + n) of the 8 hexadecimal digits are left out, then the
// others, lowest first.
inline void AppendHalfBytes(std::vector<unsigned>& halves, std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  const std::uint32_t filler = value < 0 ? 0xf : 0;
  unsigned left = 0;
  const unsigned most = filler ? 7 : 8;
  while (left < most && (bits >> (28 - 4 * left) & 0xf) == filler) ++left;
  halves.push_back(left == 0 ? 0 : left + (filler ? 8 : 0));
  for (unsigned k = 0; k < 8 - left; ++k) halves.push_back(bits >> (4 * k) & 0xf);
}

inline std::string Packed(std::vector<unsigned> halves) {
  if (halves.size() % 2) halves.push_back(0);
  std::string bytes;
  for (std::size_t i = 0; i < halves.size(); i += 2) {
    bytes += static_cast<char>(halves[i] << 4 | halves[i + 1]);
  }
  return bytes;
}

// Second differences of the scaled values.
inline std::string NumpressLinear(const Values& values, double scale) {
  std::vector<std::int32_t> scaled;
  for (const double value : values) scaled.push_back(static_cast<std::int32_t>(std::lround(value * scale)));
  std::string bytes = FixedPoint(scale);
  std::vector<unsigned> halves;
  for (std::size_t i = 0; i < scaled.size(); ++i) {
    if (i < 2) {
      bytes.append(reinterpret_cast<const char*>(&scaled[i]), 4);
    } else {
      AppendHalfBytes(halves, scaled[i] - 2 * scaled[i - 1] + scaled[i - 2]);
    }
  }
  return bytes + Packed(halves);
}

// Counts, rounded.
inline std::string NumpressPic(const Values& values) {
  std::vector<unsigned> halves;
  for (const double value : values) AppendHalfBytes(halves, static_cast<std::int32_t>(std::lround(value)));
  return Packed(halves);
}

// Scaled logarithms in 16 bits.
inline std::string NumpressSlof(const Values& values, double scale) {
  std::string bytes = FixedPoint(scale);
  for (const double value : values) {
    const auto word = static_cast<std::uint16_t>(std::lround(std::log(value + 1) * scale));
    bytes.append(reinterpret_cast<const char*>(&word), 2);
  }
  return bytes;
}

inline std::string Term(const std::string& accession, const std::string& more = "") {
  return "<cvParam cvRef=\"MS\" accession=\"" + accession + "\" name=\"x\" " + more + "/>";
}

constexpr const char* kFloat32 = "MS:1000521";
constexpr const char* kFloat64 = "MS:1000523";
constexpr const char* kPlain = "MS:1000576";
constexpr const char* kZlib = "MS:1000574";
constexpr const char* kLinear = "MS:1002312";
constexpr const char* kPic = "MS:1002313";
constexpr const char* kSlof = "MS:1002314";
constexpr const char* kMz = "MS:1000514";
constexpr const char* kIntensity = "MS:1000515";
constexpr const char* kProfile = "MS:1000128";
constexpr const char* kCentroid = "MS:1000127";

inline std::string ArrayOfText(const std::string& terms, const std::string& base64) {
  return "<binaryDataArray encodedLength=\"" + std::to_string(base64.size()) + "\">" + terms + "<binary>" +
         base64 + "</binary></binaryDataArray>\n";
}

inline std::string ArrayOf(const std::string& what, const std::string& bytes,
                           const std::string& type = kFloat64, const std::string& packing = kPlain) {
  return ArrayOfText(Term(type) + Term(packing) + Term(what), Base64(bytes));
}

inline std::string SpectrumOf(const std::string& id, std::size_t points, const std::string& arrays,
                              const std::string& terms = Term("MS:1000511", "value=\"1\"") + Term(kProfile),
                              const std::string& time = "value=\"2\" unitAccession=\"UO:0000031\"") {
  return "<spectrum index=\"0\" id=\"" + id + "\" defaultArrayLength=\"" + std::to_string(points) + "\">\n" +
         terms + "<scanList count=\"1\"><scan>" + Term("MS:1000016", time) + "</scan></scanList>\n" +
         "<binaryDataArrayList count=\"2\">" + arrays + "</binaryDataArrayList></spectrum>\n";
}

inline std::string PlainSpectrum(const std::string& id, const Values& mz, const Values& amplitude) {
  return SpectrumOf(id, mz.size(),
                    ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(amplitude)));
}

inline std::string MzML(const std::string& spectra, std::size_t count = 1, const std::string& groups = "") {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<mzML xmlns=\"http://psi.hupo.org/ms/mzml\" "
         "version=\"1.1.0\">\n" +
         groups + "<run id=\"r\">\n<spectrumList count=\"" + std::to_string(count) + "\">\n" + spectra +
         "</spectrumList>\n</run>\n</mzML>\n";
}

}  // namespace tests
