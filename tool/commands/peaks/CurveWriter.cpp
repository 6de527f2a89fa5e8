#include <tool/commands/peaks/CurveWriter.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <cmath>
#include <iterator>

namespace TslTool {
namespace {

std::string ValueText(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? fmt::format("{}", WithoutNaNSign(values[i])) : std::string();
}

}  // namespace

std::string CurveHead() { return "scan\trt_s\tmz\tamplitude\tbaseline\tnoise\n"; }

std::string CurvePart(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& s = *loaded.spectrum;
  const std::string time = std::isnan(loaded.rtSeconds) ? "" : fmt::format("{}", loaded.rtSeconds);
  std::string text;
  for (std::size_t i = 0; i < s.xAxis.size(); ++i)
    fmt::format_to(std::back_inserter(text), "{}\t{}\t{}\t{}\t{}\t{}\n", loaded.scan, time, s.xAxis[i],
                   ValueText(s.yAxis, i), ValueText(s.baseline, i), ValueText(s.noise, i));
  return text;
}

}  // namespace TslTool
