#include <tool/io/Counts.h>
#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>

static_assert(std::endian::native == std::endian::little, "Counts are stored little-endian.");

namespace TslTool {
namespace {

constexpr std::string_view kIntegers = "u32-zlib";
constexpr std::string_view kReals = "f64-zlib";
// Counts are mostly small numbers in wide words; a fast level already takes most of it.
constexpr int kLevel = 3;
// No zlib stream expands further than this, so a larger claim is damage.
constexpr std::uint64_t kHighestRatio = 1100;

bool IsCount(double value) {
  return value >= 0.0 && value <= std::numeric_limits<std::uint32_t>::max() && value == std::floor(value) &&
         !std::signbit(value);
}

template <class T>
std::string Compress(const std::vector<T>& values) {
  const auto size = static_cast<uLong>(values.size() * sizeof(T));
  uLongf packed = compressBound(size);
  std::string bytes(packed, '\0');
  const int result = compress2(reinterpret_cast<Bytef*>(bytes.data()), &packed,
                               reinterpret_cast<const Bytef*>(values.data()), size, kLevel);
  if (result != Z_OK) throw std::runtime_error("counts cannot be compressed");
  bytes.resize(packed);
  return bytes;
}

template <class T>
std::vector<T> Uncompress(std::string_view bytes, std::uint64_t points) {
  if (points > bytes.size() * kHighestRatio / sizeof(T)) throw std::runtime_error("counts are cut short");
  std::vector<T> values(points);
  T spare{};  // zlib wants a place to write to, also for no values
  auto size = static_cast<uLongf>(points * sizeof(T));
  auto* out = reinterpret_cast<Bytef*>(points > 0 ? values.data() : &spare);
  auto used = static_cast<uLong>(bytes.size());
  const int result = uncompress2(out, &size, reinterpret_cast<const Bytef*>(bytes.data()), &used);
  if (result != Z_OK || size != points * sizeof(T) || used != bytes.size())
    throw std::runtime_error("counts are damaged");
  return values;
}

}  // namespace

PackedCounts PackCounts(const std::vector<double>& counts) {
  if (std::ranges::all_of(counts, IsCount)) {
    std::vector<std::uint32_t> integers(counts.size());
    std::ranges::transform(counts, integers.begin(), [](double c) { return static_cast<std::uint32_t>(c); });
    return {std::string(kIntegers), Compress(integers)};
  }
  return {std::string(kReals), Compress(counts)};
}

void UnpackCounts(std::string_view encoding, std::string_view bytes, std::uint64_t points,
                  std::vector<double>& counts) {
  if (encoding == kIntegers) {
    const auto integers = Uncompress<std::uint32_t>(bytes, points);
    counts.assign(integers.begin(), integers.end());
  } else if (encoding == kReals) {
    counts = Uncompress<double>(bytes, points);
  } else {
    throw std::runtime_error("unknown encoding of counts \"" + std::string(encoding) + "\"");
  }
}

}  // namespace TslTool
