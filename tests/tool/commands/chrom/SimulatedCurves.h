#pragma once
// Chromatograms of which the truth is known.

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <tool/commands/chrom/EvaluateCurve.h>
#include <tool/frame/CommandLine.h>

namespace tests {

struct SimulatedPeak {
  double seconds;
  double height;
  double sigma;

  double Area() const { return height * sigma * std::sqrt(2.0 * std::acos(-1.0)); }
  double At(double at) const { return height * std::exp(-0.5 * std::pow((at - seconds) / sigma, 2)); }
};

// A point a second over a level, without noise.
inline TslTool::Chromatogram CleanCurve(const std::vector<SimulatedPeak>& peaks, std::size_t points,
                                        double level) {
  TslTool::Chromatogram curve;
  curve.name = "sim";
  for (std::size_t i = 0; i < points; ++i) {
    curve.seconds.push_back(static_cast<double>(i));
    double value = level;
    for (const SimulatedPeak& peak : peaks) value += peak.At(curve.seconds.back());
    curve.values.push_back(value);
  }
  return curve;
}

inline void AddNoise(TslTool::Chromatogram& curve, double deviation, std::mt19937& random) {
  std::normal_distribution<double> noise(0.0, deviation);
  for (double& value : curve.values) value += noise(random);
}

// Counts, whose variance is known, of an amplitude of `unit` each.
inline void TakeCounts(TslTool::Chromatogram& curve, double unit, std::mt19937& random) {
  curve.variance.clear();
  for (double& value : curve.values) {
    value = unit * static_cast<double>(std::poisson_distribution<int>(value / unit)(random));
    curve.variance.push_back(unit * value);
  }
}

// With the default chain, or with the switches given.
inline TslTool::EvaluatedCurve Evaluated(const TslTool::Chromatogram& measured,
                                         std::vector<std::string> switches = {},
                                         const std::optional<TslTool::RealRange>& integrate = {}) {
  TslTool::ChainOptions chain{TslTool::PresetsForChromatograms()};
  TslTool::EvaluatedCurve evaluated;
  TslTool::Command command{
      .name = "try",
      .summary = "",
      .examples = "",
      .declare = [&](TslTool::Options& options) { chain.Declare(options); },
      .run =
          [&](const TslTool::Options& options) {
            evaluated = TslTool::EvaluateCurve(measured, {"in.csv", chain, options, integrate});
            return 0;
          },
  };
  switches.insert(switches.begin(), {"program", "try"});
  std::vector<char*> argv;
  for (std::string& word : switches) argv.push_back(word.data());
  const TslTool::Command program{
      .name = "program", .summary = "", .examples = "", .declare = {}, .run = {}, .family = {command}};
  TslTool::RunCommandLine(static_cast<int>(argv.size()), argv.data(), program);
  return evaluated;
}

}  // namespace tests
