#include <tslbl/calibrate/CalFile.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/WholeFile.h>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace TslBL {
namespace {

constexpr std::uint32_t kVersion = 1;

}  // namespace

bool SaveCalFile(const std::wstring& path, const std::vector<MZCalPt>& points) {
  std::ostringstream stream(std::ios::binary);
  BinaryWriter writer(stream);
  writer << kVersion << static_cast<std::uint32_t>(points.size());
  for (const MZCalPt& point : points) point.Serialize(writer);
  return WriteWholeFile(path, stream.str());
}

bool LoadCalFile(const std::wstring& path, std::vector<MZCalPt>& points) {
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) return false;
  std::istringstream stream(bytes, std::ios::binary);
  BinaryReader reader(stream);
  std::uint32_t version = 0;
  std::uint32_t count = 0;
  reader >> version;
  if (version != kVersion) return false;
  reader >> count;
  if (!reader.Good()) throw std::runtime_error("Unexpected end of stream.");
  std::vector<MZCalPt> read;
  for (; count > 0; --count) reader >> static_cast<ITslSerial&>(read.emplace_back());
  points = std::move(read);
  return true;
}

}  // namespace TslBL
