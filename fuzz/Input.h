#pragma once
// What the fuzz targets share.

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>

namespace fuzz {

// A fact that must hold whatever the input; one that does not is a finding.
inline void Require(bool fact, const char* text) {
  if (fact) return;
  std::fprintf(stderr, "does not hold: %s\n", text);
  std::abort();
}

// Hands the bytes of an input out from the front; zeros when there are none left.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool Empty() const { return rest_.empty(); }
  std::string_view Rest() const { return rest_; }
  template <class T>
  T Take() {
    T value{};
    const std::size_t size = std::min(sizeof value, rest_.size());
    std::memcpy(&value, rest_.data(), size);
    rest_.remove_prefix(size);
    return value;
  }
  std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : Take<std::uint8_t>() % limit; }

  // A parameter: often one at a limit or beyond, else any.
  std::uint32_t Integer() {
    constexpr std::uint32_t kAtLimits[] = {0,  1,   2,   3,   4,    5,     7,        10,  25,
                                           50, 100, 250, 999, 2000, 65536, 1u << 31, ~0u, ~0u - 1};
    const std::uint8_t pick = Take<std::uint8_t>();
    return pick < std::size(kAtLimits) ? kAtLimits[pick] : Take<std::uint32_t>();
  }
  double Real() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kAtLimits[] = {0.0,       -0.0,
                                    1.0,       0.5,
                                    -1.0,      3.0,
                                    25.0,      50.0,
                                    100.0,     100.5,
                                    250.0,     1000.0,
                                    1e6,       1e-9,
                                    -1000.0,   1e300,
                                    -1e300,    std::numeric_limits<double>::max(),
                                    kInfinity, -kInfinity,
                                    4.2e9,     -4e9,
                                    5e-324,    2.2e-308,
                                    9.2e18,    std::numeric_limits<double>::quiet_NaN()};
    const std::uint8_t pick = Take<std::uint8_t>();
    return pick < std::size(kAtLimits) ? kAtLimits[pick] : Take<double>();
  }

 private:
  std::string_view rest_;
};

// A file with these bytes and this name, the same file each time.
inline std::string FileWith(const std::string& name, std::string_view bytes) {
  struct Folder {
    Folder() {
      std::string made = (std::filesystem::temp_directory_path() / "tslbl-fuzz-XXXXXX").string();
      Require(mkdtemp(made.data()) != nullptr, "there is a temporary folder");
      path = made;
    }
    ~Folder() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path path;
  };
  static const Folder folder;
  const std::string path = (folder.path / name).string();
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// Runs `read`; false if it refuses its input, as all readers do, with std::runtime_error or, where a text is
// no number, with the std::bad_cast of the conversion. Any other exception is a finding.
template <class Read>
bool Accepts(Read read) {
  try {
    read();
    return true;
  } catch (const std::runtime_error& error) {
    Require(error.what()[0] != '\0', "a refusal has a reason");
    return false;
  } catch (const std::bad_cast&) {
    return false;
  }
}

}  // namespace fuzz
