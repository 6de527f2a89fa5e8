#include <tool/commands/calibrate/ApplyToInput.h>

#include <fmt/format.h>

#include <tool/commands/average/AverageFile.h>
#include <tool/commands/average/WholeRun.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <tool/mzml/RewriteMzML.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MZConvert.h>
#include <cmath>
#include <stdexcept>

namespace TslTool {
namespace {

// A calibration mends an axis and makes no other of it: mass DAC values are far from m/z.
constexpr double kFarthest = 0.05;  // of an m/z
constexpr double kAlways = 2.0;     // m/z

void RequireNear(const std::string& calibrationFile, const TslBL::MZCalPt& point, double present,
                 const std::string& axis) {
  if (std::abs(point.MZ - present) <= kAlways + kFarthest * point.MZ) return;
  throw InputError(
      calibrationFile, fmt::format("point \"{}\"", TslCommon::ToUtf8(point.Name)),
      fmt::format("{} stands at m/z {} on {}, and shall at {}: that is the calibration of another "
                  "kind of axis",
                  point.MassDAC, present, axis, point.MZ));
}

class RunCopy {
 public:
  RunCopy(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
          const std::string& calibrationFile)
      : reader_(input), points_(points) {
    for (const auto& [id, tune] : reader_.Tunes()) {
      const TslBL::MZConvert convert(tune.MZCalPts);
      for (const TslBL::MZCalPt& point : points)
        RequireNear(calibrationFile, point, convert.DACToMZ(point.MassDAC),
                    fmt::format("the axis of tune {}", id));
    }
  }

  void WriteTo(const std::string& output) {
    WriteWholeRun(output, reader_.Title(), [this](RunWriter& writer) { Write(writer); });
  }

 private:
  void Write(RunWriter& writer) {
    if (const auto* method = reader_.AcquiredBy()) writer.AddMethod(*method);
    for (const auto& [id, tune] : reader_.Tunes()) {
      writer.AddTune(id, tune);
      writer.AddCalibration(id, points_);
    }
    Progress progress(reader_.Count(), "scans");
    TslBL::RawSpectrum raw;
    for (PackedScan packed; reader_.Next(packed); progress.Step()) {
      ThrowIfInterrupted();
      reader_.Unpack(packed, raw);  // what is damaged is told and not copied
      reader_.TuneOf(packed.number, raw);
      writer.AddScan(packed);
    }
  }

  RunReader reader_;
  const std::vector<TslBL::MZCalPt>& points_;
};

std::string RowsOf(const Scan& scan, const TslBL::MZConvert& convert) {
  std::string rows;
  for (std::size_t i = 0; i < scan.mz.size(); ++i)
    rows += fmt::format("{}\t{}\n", convert.DACToMZ(scan.mz[i]), scan.amplitude[i]);
  return rows;
}

void WriteText(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
               const std::string& output) {
  const TslBL::MZConvert convert(points);
  const auto source = OpenScans(input);
  Output file(output);
  file.Write("mz\tamplitude\n");
  for (Scan scan; source->Next(scan); ThrowIfInterrupted()) file.Write(RowsOf(scan, convert));
  file.Commit();
  Tell(InputName(input), source->Notes());
  Warn(InputName(input), source->Warnings());
}

ProcessingMethod MethodOf(const std::vector<TslBL::MZCalPt>& points) {
  ProcessingMethod method = {{Cv::kCalibration}, {}};
  for (const TslBL::MZCalPt& point : points)
    method.params.emplace_back(TslCommon::ToUtf8(point.Name),
                               fmt::format("{} to {}", point.MassDAC, point.MZ));
  return method;
}

void WriteMzML(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
               const std::string& output) {
  const TslBL::MZConvert convert(points);
  Output file(output);
  const std::uint64_t spectra = RewriteMzML(
      input, [&](double mz) { return convert.DACToMZ(mz); }, "tslbl calibrate", MethodOf(points), file);
  if (spectra == 0) throw InputError(InputName(input), "", "holds no spectrum");
  file.Commit();
}

void RequireFormat(const std::string& output, const char* format) {
  if (AverageFormatOf(output) != format)
    throw UsageError(fmt::format("--output: {} will be {}, as the input is; name it so", output,
                                 format == std::string("mzml") ? "mzML" : format));
}

void WriteForeign(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
                  const std::string& output) {
  const bool isMzML = KindOfFile(input) == FileKind::Xml;
  RequireFormat(output, isMzML ? "mzml" : "text");
  isMzML ? WriteMzML(input, points, output) : WriteText(input, points, output);
}

}  // namespace

void ApplyToInput(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
                  const std::string& calibrationFile, const std::string& output) {
  if (!CanBeReadAgain(input)) throw UsageError("--apply: INPUT must be a file, which can be read twice");
  if (IsDatabase(input)) {
    RequireFormat(output, "run");
    RunCopy(input, points, calibrationFile).WriteTo(output);
  } else {
    for (const TslBL::MZCalPt& point : points)
      RequireNear(calibrationFile, point, point.MassDAC, "the axis of the input");
    WriteForeign(input, points, output);
  }
}

}  // namespace TslTool
