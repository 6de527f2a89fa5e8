#include <tool/commands/average/AverageFile.h>

#include <fmt/format.h>

#include <tool/commands/average/WholeRun.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Output.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <tool/mzml/MzMLDocument.h>
#include <tslbl/closed/common/Truncate.h>
#include <filesystem>
#include <stdexcept>

namespace TslTool {
namespace {

// Rows that are formatted before they are written.
constexpr std::size_t kRows = 4096;

void WriteText(const TslBL::Spectrum& spectrum, const std::string& file) {
  Output output(file);
  output.Write("mz\tamplitude\n");
  std::string rows;
  for (std::size_t i = 0; i < spectrum.yAxis.size(); ++i) {
    rows += fmt::format("{}\t{}\n", spectrum.xAxis[i], spectrum.yAxis[i]);
    if (i % kRows != kRows - 1) continue;
    output.Write(rows);
    rows.clear();
  }
  output.Write(rows);
  output.Commit();
}

// What the average is of.
std::vector<std::pair<std::string, std::string>> ParamsOf(const Averaged& averaged,
                                                          const AverageOrigin& origin) {
  std::vector<std::pair<std::string, std::string>> params = {
      {"spectra averaged", fmt::format("{}", averaged.spectra)}};
  if (!origin.chosen.empty()) params.emplace_back("chosen by", origin.chosen);
  if (!origin.background.empty()) params.emplace_back("background subtracted", origin.background);
  return params;
}

void WriteMzML(const Averaged& averaged, const AverageOrigin& origin, const CvTerm& unit,
               const std::string& file) {
  Output output(file);
  MzMLDocument document;
  const TslBL::Spectrum& spectrum = *averaged.loaded.spectrum;
  SpectrumArrays arrays = {Cv::kProfileSpectrum, spectrum.xAxis,
                           spectrum.yAxis,       unit,
                           Cv::kMeanOfSpectra,   ParamsOf(averaged, origin)};
  try {
    document.Add(output, document.Element(averaged.loaded, arrays));
  } catch (const std::runtime_error& error) {
    throw InputError(InputName(origin.input), "", error.what());
  }
  document.WriteTo(output, {origin.input, averaged.ids, "tslbl average", {{{Cv::kConversion}, {}}}});
  output.Commit();
}

// A run of one scan at the mean time.
void WriteSum(const RunReader& run, const Averaged& averaged, RunWriter& writer) {
  SummedScans sum = *averaged.sum;
  sum.raw.info.TimeStamp = TslCommon::Truncate<std::uint32_t>(averaged.loaded.rtSeconds * 1000.0 + 0.5);
  const std::uint32_t id = sum.raw.info.TuneId;
  writer.AddTune(id, TuneOfSum(run.Tunes().at(id), sum.scans));
  if (const auto* calibration = run.CalibrationOf(id)) writer.AddCalibration(id, *calibration);
  writer.AddScan(sum.raw);
}

void RequireRun(const Averaged& averaged, const AverageOrigin& origin) {
  const auto refuse = [&](const char* reason) {
    throw InputError(
        InputName(origin.input), "",
        fmt::format("a run holds the counts of one tune, and {}; text and mzML take it", reason));
  };
  if (!origin.background.empty()) refuse("without its background this is none");
  if (!IsDatabase(origin.input)) refuse("this is no run");
  if (!averaged.sum) refuse("these scans are of several tunes or lengths");
}

void WriteRun(const Averaged& averaged, const AverageOrigin& origin, const std::string& file) {
  RequireRun(averaged, origin);
  const RunReader run(origin.input);
  WriteWholeRun(file, run.Title(), [&](RunWriter& writer) { WriteSum(run, averaged, writer); });
}

}  // namespace

const std::vector<std::string>& AverageFormats() {
  static const std::vector<std::string> names = {"text", "mzml", "run"};
  return names;
}

std::string AverageFormatOf(const std::string& output) {
  std::string ending = std::filesystem::path(output).extension().string();
  for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  if (ending == ".run") return "run";
  return ending == ".mzml" ? "mzml" : "text";
}

void WriteAverage(const Averaged& averaged, const AverageOrigin& origin, const std::string& format,
                  const std::string& output) {
  if (format == "run") return WriteRun(averaged, origin, output);
  if (format == "text") return WriteText(*averaged.loaded.spectrum, output);
  const bool isRate = origin.input.empty() || IsDatabase(origin.input);
  WriteMzML(averaged, origin, isRate ? Cv::kCountsPerSecond : Cv::kCounts, output);
}

}  // namespace TslTool
