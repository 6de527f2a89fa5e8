#include <tool/commands/peaks/MzMLWriter.h>

#include <fmt/format.h>

#include <tool/commands/peaks/MzMLProcessing.h>
#include <tool/commands/peaks/PeakArrays.h>
#include <tool/frame/InputError.h>
#include <tool/io/InputPath.h>
#include <stdexcept>

namespace TslTool {

// Multiplied counts per second are none.
const CvTerm& MzMLWriter::UnitOf(const LoadedSpectrum& loaded) const {
  return loaded.countAmpl > 0.0 && !origin_.scale ? Cv::kCountsPerSecond : Cv::kCounts;
}

std::string MzMLWriter::Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const {
  try {
    return document_.Element(loaded, PeakArrays(peaks, UnitOf(loaded)));
  } catch (const std::runtime_error& error) {
    throw InputError(InputName(origin_.input), fmt::format("scan {}", loaded.scan), error.what());
  }
}

void MzMLWriter::Write(Output& output, const std::string& part, bool) { document_.Add(output, part); }

void MzMLWriter::Finish(Output& output) {
  document_.WriteTo(output, {origin_.input, origin_.ids, "tslbl peaks", MethodsOf(origin_)});
}

}  // namespace TslTool
