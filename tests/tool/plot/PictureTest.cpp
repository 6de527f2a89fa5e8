// All pieces together: a spectrum as a later command may show one.
//
// Tests: Axes.cpp, Curves.cpp, Legend.cpp.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <tool/plot/Axes.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <tool/plot/Strokes.h>
#include <tool/plot/SvgReading.h>

using namespace tests;
using namespace TslTool;

namespace {

constexpr std::size_t kPoints = 60000;

struct Peak {
  double mz;
  double height;
};
const std::vector<Peak> kTallestFirst = {{622.03, 9e5}, {322.05, 6e5}, {323.05, 1.2e5}, {118.09, 3e5},
                                         {922.01, 2e5}, {623.03, 2e5}, {219.0, 5e4}};

struct Spectrum {
  std::vector<double> mz, amplitude, baseline, low, high;
};

double BaseAt(double mz) { return 40000 * std::exp(-(mz - 100) / 400); }

Spectrum Synthetic() {
  std::mt19937 random(7);
  std::normal_distribution<double> noise(0, 5000);
  Spectrum s;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const double mz = 100 + 0.015 * static_cast<double>(i);
    const double base = BaseAt(mz);
    double amplitude = base + noise(random);
    for (const auto& [at, height] : kTallestFirst)
      amplitude += height * std::exp(-std::pow((mz - at) / 0.25, 2));
    s.mz.push_back(mz);
    s.amplitude.push_back(amplitude);
    s.baseline.push_back(base);
    s.low.push_back(base - 10000);
    s.high.push_back(base + 10000);
  }
  return s;
}

std::string Draw(const Spectrum& s, const Range& mz, const Range& amplitude) {
  const Box panel = {0, 30, 1000, 470};
  const Axes axes(panel, mz, amplitude.Padded(0.08));
  Svg svg(1000, 500);
  DrawTitle(svg, panel, "scan 1");
  axes.Draw(svg, "m/z", "counts/s");
  DrawBand(svg, axes, s.mz, s.low, s.high, "#f3d9c8");
  DrawCurve(svg, axes, s.mz, s.amplitude, StrokeOf(0, 1.2));
  DrawCurve(svg, axes, s.mz, s.baseline, StrokeOf(1));
  std::vector<Label> labels;
  for (const auto& [at, height] : kTallestFirst)
    labels.push_back({axes.At(at, BaseAt(at) + height), std::to_string(at).substr(0, 6)});
  DrawLabels(svg, panel, labels);
  DrawLegend(svg, {64, 20}, StrokeOf(0), "amplitude");
  DrawLegend(svg, {264, 20}, StrokeOf(1), "baseline");
  return svg.Document();
}

Range HeightOf(const Spectrum& s) {
  Range height;
  height.Include(s.amplitude);
  return height;
}

TEST(Picture, OfSixtyThousandPointsIsSmall) {
  const Spectrum spectrum = Synthetic();
  const std::string svg = Draw(spectrum, {100, 1000}, HeightOf(spectrum));
  ShowPicture("spectrum", svg);
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_LT(svg.size(), 120000U);
  for (const char* label : {">622.03<", ">322.05<", ">118.09<", ">922.01<", ">219.00<"})
    EXPECT_EQ(CountOf(svg, label), 1U) << label;
}

TEST(Picture, OfAPartShowsThePartAlone) {
  const std::string svg = Draw(Synthetic(), {619, 627}, {0, 60000});
  ShowPicture("spectrum-part", svg);
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_LT(svg.size(), 60000U);
  EXPECT_EQ(CountOf(svg, ">118.09<"), 0U);
}

}  // namespace
