#include <tool/commands/calibrate/CalibrationPoints.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/io/ForeignKinds.h>
#include <tslbl/calibrate/CalFile.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MZConvert.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace TslTool {
namespace {

constexpr std::uint32_t kHighestVersion = 1000;  // what is higher is no version

// The version word, which the library tells nobody.
std::uint32_t VersionOf(const std::string& file) {
  std::error_code unknown;
  if (std::filesystem::is_directory(file, unknown)) throw InputError(file, "", "is a folder, not a file");
  std::ifstream in(file, std::ios::binary);
  if (!in) throw InputError(file, "", "the file does not exist or cannot be read");
  unsigned char bytes[4] = {};
  if (!in.read(reinterpret_cast<char*>(bytes), sizeof bytes))
    throw InputError(file, "", "is no calibration file: it ends within its version");
  std::uint32_t version = 0;
  for (int i = 3; i >= 0; --i) version = version << 8 | bytes[i];
  return version;
}

std::string NameOf(const TslBL::MZCalPt& point) {
  return fmt::format("point \"{}\"", TslCommon::ToUtf8(point.Name));
}

void RequireAxis(const std::string& file, const std::vector<TslBL::MZCalPt>& points) {
  if (points.size() < 2)
    throw InputError(
        file, "",
        fmt::format("holds {} point{}, and an axis needs two", points.size(), points.size() == 1 ? "" : "s"));
  for (const TslBL::MZCalPt& point : points)
    if (!std::isfinite(point.MZ) || !std::isfinite(point.MassDAC))
      throw InputError(file, NameOf(point),
                       fmt::format("m/z {} at mass DAC {} is not finite", point.MZ, point.MassDAC));
  for (std::size_t i = 1; i < points.size(); ++i)
    if (!(points[i].MZ > points[i - 1].MZ && points[i].MassDAC > points[i - 1].MassDAC))
      throw InputError(file, NameOf(points[i]),
                       fmt::format("m/z {} at mass DAC {} does not lie above m/z {} at mass DAC {}",
                                   points[i].MZ, points[i].MassDAC, points[i - 1].MZ, points[i - 1].MassDAC));
  const TslBL::MZConvert convert(points);
  for (std::size_t i = 1; i < points.size(); ++i)
    if (!(convert.DACToMZ(points[i].MassDAC) > convert.DACToMZ(points[i - 1].MassDAC)))
      throw InputError(file, NameOf(points[i]),
                       fmt::format("m/z {} at mass DAC {} is too close to m/z {} at mass DAC {} for an axis",
                                   points[i].MZ, points[i].MassDAC, points[i - 1].MZ, points[i - 1].MassDAC));
}

}  // namespace

std::vector<TslBL::MZCalPt> ReadCalibration(const std::string& file) {
  const std::uint32_t version = VersionOf(file);
  if (version == 0 || version > kHighestVersion) throw InputError(file, "", "is no calibration file");
  std::vector<TslBL::MZCalPt> points;
  try {
    if (!TslBL::LoadCalFile(TslCommon::FromUtf8(file), points))
      throw InputError(file, "",
                       fmt::format("is a calibration file of version {}; this program reads 1", version));
  } catch (const InputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw InputError(file, "", fmt::format("is damaged or cut short: {}", error.what()));
  }
  std::ranges::stable_sort(points, {}, &TslBL::MZCalPt::MZ);
  RequireAxis(file, points);
  return points;
}

void WriteCalibration(const std::string& file, const std::vector<TslBL::MZCalPt>& points) {
  RequireAxis(file, points);
  if (!TslBL::SaveCalFile(TslCommon::FromUtf8(file), points)) throw InputError(file, "", "cannot be written");
}

}  // namespace TslTool
