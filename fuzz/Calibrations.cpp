// Calibration files and files of calibrants. The first byte says which; the rest is the file. What is read
// must make an axis that rises, or be a set of calibrants that can be told apart, and survive writing; a
// calibration is put on a text as well.

#include <fuzz/Input.h>
#include <tool/commands/calibrate/ApplyToInput.h>
#include <tool/commands/calibrate/CalibrantFile.h>
#include <tool/commands/calibrate/CalibrationPoints.h>
#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>
#include <tslbl/records/RecordForms.h>
#include <tslbl/tune/MZConvert.h>
#include <functional>
#include <set>

using namespace fuzz;

namespace {

// Runs `read`; false if it refuses the file, which it names.
template <class Read>
bool AcceptsFile(const std::string& file, Read read) {
  try {
    read();
    return true;
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
    return false;
  }
}

void CheckApplied(const std::string& calibration, const std::vector<TslBL::MZCalPt>& points) {
  const std::string input = FileWith("input.txt", "100 1\n101 5\n102 2\n1000 7\n");
  const std::string output = FileWith("output.txt", "");
  std::filesystem::remove(output);
  const bool isApplied =
      AcceptsFile(calibration, [&] { TslTool::ApplyToInput(input, points, calibration, output); });
  Require(std::filesystem::exists(output) == isApplied, "an output is there if it is whole");
}

void CheckCalibration(std::string_view bytes) {
  const std::string file = FileWith("a.cal", bytes);
  std::vector<TslBL::MZCalPt> points;
  if (!AcceptsFile(file, [&] { points = TslTool::ReadCalibration(file); })) return;
  const TslBL::MZConvert convert(points);
  for (std::size_t i = 1; i < points.size(); ++i)
    Require(convert.DACToMZ(points[i - 1].MassDAC) < convert.DACToMZ(points[i].MassDAC), "the axis rises");
  const std::string again = FileWith("again.cal", "");
  TslTool::WriteCalibration(again, points);
  Require(TslTool::ReadCalibration(again) == points, "what was written is read the same");
  CheckApplied(file, points);
}

void CheckCalibrants(std::string_view bytes) {
  const std::string file = FileWith("ions.txt", bytes);
  TslBL::CalibrateParams params;
  if (!AcceptsFile(file, [&] { params = TslTool::ReadCalibrants(file); })) return;
  std::set<double> mz;
  std::set<std::wstring> names;
  for (const TslBL::Calibrant& calibrant : params.calibrants) {
    Require(calibrant.MZ > 0.0, "m/z are above 0");
    mz.insert(calibrant.MZ);
    names.insert(calibrant.Name);
  }
  Require(mz.size() == params.calibrants.size() && names.size() == params.calibrants.size() && mz.size() > 1,
          "calibrants can be told apart");
  const std::string record = FileWith("ions.bin", TslBL::ToBytes(params));
  Require(TslTool::ReadCalibrants(record).calibrants == params.calibrants,
          "a written record is read the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const bool isCalibration = input.Take<std::uint8_t>() % 2 == 0;
  isCalibration ? CheckCalibration(input.Rest()) : CheckCalibrants(input.Rest());
  return 0;
}
