#include <tool/commands/calibrate/CalibrationTable.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <tslbl/calibrate/Calibrate.h>
#include <algorithm>
#include <optional>

namespace TslTool {
namespace {

constexpr double kMillion = 1e6;

const char* StatusText(const CalibratedPoint& point) {
  if (point.status == TslBL::Calibrate::Active) return "used";
  return point.status == TslBL::Calibrate::Off ? "off" : "no peak";
}

std::string NameOf(const CalibratedPoint& point) { return Printable(point.name, point.name.size()); }

// m/z, deviation in m/z and in ppm.
std::string Seen(const std::optional<double>& mz, double expected) {
  if (!mz) return fmt::format(" {:>11} {:>9} {:>9}", "-", "-", "-");
  return fmt::format(" {:>11.4f} {:>+9.4f} {:>+9.2f}", *mz, *mz - expected, PpmOf(*mz, expected));
}

std::string Cells(const std::optional<double>& mz, double expected) {
  return mz ? fmt::format("\t{}\t{}", *mz, PpmOf(*mz, expected)) : "\t\t";
}

}  // namespace

double PpmOf(double mz, double expected) { return (mz - expected) / expected * kMillion; }

std::string CalibrationTable(const std::vector<CalibratedPoint>& points) {
  std::size_t width = std::string_view("calibrant").size();
  for (const CalibratedPoint& point : points) width = std::max(width, NameOf(point).size());
  std::string text =
      fmt::format("{:<{}} {:>11} {:>11} {:>9} {:>9} {:>11} {:>9} {:>9}  status\n", "calibrant", width,
                  "expected", "m/z before", "off by", "ppm", "m/z after", "off by", "ppm");
  for (const CalibratedPoint& point : points)
    text +=
        fmt::format("{:<{}} {:>11.4f}{}{}  {}\n", NameOf(point), width, point.expected,
                    Seen(point.before, point.expected), Seen(point.after, point.expected), StatusText(point));
  return text;
}

std::string CalibrationTsv(const std::vector<CalibratedPoint>& points) {
  std::string text = "calibrant\tmz_expected\tmz_before\tppm_before\tmz_after\tppm_after\tstatus\n";
  for (const CalibratedPoint& point : points)
    text +=
        fmt::format("{}\t{}{}{}\t{}\n", NameOf(point), point.expected, Cells(point.before, point.expected),
                    Cells(point.after, point.expected), StatusText(point));
  return text;
}

}  // namespace TslTool
