#include <tool/commands/decon/MassCurveWriter.h>

#include <fmt/format.h>

#include <tool/commands/decon/SeriesRows.h>
#include <cmath>
#include <iterator>

namespace TslTool {

std::string MassCurveHead() { return "scan\trt_s\tmass\tdensity\n"; }

std::string MassCurvePart(const LoadedSpectrum& loaded) {
  const TslBL::DeconSpectrum& spectrum = DeconvolvedOf(loaded);
  const std::string time = std::isnan(loaded.rtSeconds) ? "" : fmt::format("{}", loaded.rtSeconds);
  std::string text;
  for (std::size_t i = 0; i < spectrum.MassX.size(); ++i)
    fmt::format_to(std::back_inserter(text), "{}\t{}\t{}\t{}\n", loaded.scan, time, spectrum.MassX[i],
                   spectrum.MassY[i]);
  return text;
}

}  // namespace TslTool
