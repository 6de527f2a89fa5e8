#pragma once
// What the index of an mzML text says, found by searching the text, and its checksum, computed anew (FIPS
// 180-4).

#include <bit>
#include <cstdint>
#include <regex>
#include <string>
#include <vector>

namespace tests {

struct IndexEntry {
  std::string id;  // as written
  std::size_t offset;
};

inline std::vector<IndexEntry> IndexOf(const std::string& text) {
  static const std::regex entry("<offset idRef=\"([^\"]*)\">([0-9]+)</offset>");
  std::vector<IndexEntry> entries;
  const std::string list = text.substr(text.find("<indexList"));
  for (std::sregex_iterator at(list.begin(), list.end(), entry), end; at != end; ++at)
    entries.push_back({(*at)[1], std::stoul((*at)[2])});
  return entries;
}

// What stands between the last `begin` and the '<' behind it.
inline std::string LastText(const std::string& text, const std::string& begin) {
  const std::size_t at = text.rfind(begin) + begin.size();
  return text.substr(at, text.find('<', at) - at);
}

inline std::size_t IndexListOffset(const std::string& text) {
  return std::stoul(LastText(text, "<indexListOffset>"));
}

inline std::string ChecksumOf(const std::string& text) { return LastText(text, "<fileChecksum>"); }

inline void AddBlock(const std::string& bytes, std::size_t begin, std::uint32_t (&h)[5]) {
  std::uint32_t w[80] = {};
  for (std::size_t i = 0; i < 64; ++i)
    w[i / 4] = w[i / 4] << 8 | static_cast<unsigned char>(bytes[begin + i]);
  for (int i = 16; i < 80; ++i) w[i] = std::rotl(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);
  std::uint32_t a = h[0], b = h[1], c = h[2], d = h[3], e = h[4];
  for (int i = 0; i < 80; ++i) {
    const std::uint32_t f = i < 20              ? (b & c) | (~b & d)
                            : i >= 40 && i < 60 ? (b & c) | (b & d) | (c & d)
                                                : b ^ c ^ d;
    constexpr std::uint32_t k[] = {0x5a827999, 0x6ed9eba1, 0x8f1bbcdc, 0xca62c1d6};
    const std::uint32_t next = std::rotl(a, 5) + f + e + k[i / 20] + w[i];
    e = d;
    d = c;
    c = std::rotl(b, 30);
    b = a;
    a = next;
  }
  const std::uint32_t sums[] = {a, b, c, d, e};
  for (int i = 0; i < 5; ++i) h[i] += sums[i];
}

inline std::string SumOf(std::string bytes) {
  const std::uint64_t bits = 8 * bytes.size();
  bytes += '\x80';
  bytes.append((120 - bytes.size() % 64) % 64, '\0');
  for (int shift = 56; shift >= 0; shift -= 8) bytes += static_cast<char>(bits >> shift);
  std::uint32_t h[] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
  for (std::size_t i = 0; i < bytes.size(); i += 64) AddBlock(bytes, i, h);
  std::string sum;
  for (const std::uint32_t word : h)
    for (int shift = 28; shift >= 0; shift -= 4) sum += "0123456789abcdef"[word >> shift & 15U];
  return sum;
}

// Of the text to the place where its checksum stands.
inline std::string SumUpToChecksum(const std::string& text) {
  const std::string tag = "<fileChecksum>";
  return SumOf(text.substr(0, text.rfind(tag) + tag.size()));
}

}  // namespace tests
