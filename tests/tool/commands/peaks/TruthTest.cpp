// What `peaks` finds in a simulated run, held against what is in it.
//
// Tests: Peaks.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include <tool/commands/DemoRun.h>

namespace tests {
namespace {

constexpr double kRatePerCount = 1e6 / (50.0 * 4);
constexpr double kNear = 0.3;  // m/z, half a line's width

// Expected counts of the chemical background.
double Background(double mz) { return 40.0 * std::exp(-mz / 300.0) + 8.0; }

struct Truth {
  std::map<std::string, std::vector<double>> strong, all;  // m/z by scan

  Truth() {
    for (const Row& row : DemoRun::Get().Truth()) {
      const double mz = std::stod(row.at("mz"));
      const double counts = std::stod(row.at("height")) / kRatePerCount;
      all[row.at("scan")].push_back(mz);
      if (counts > 6.0 * std::sqrt(Background(mz))) strong[row.at("scan")].push_back(mz);
    }
  }
};

double Nearest(const std::vector<double>& places, double mz) {
  double nearest = 1e9;
  for (const double place : places)
    if (std::abs(place - mz) < std::abs(nearest)) nearest = place - mz;
  return nearest;
}

struct Demonstration : testing::Test {
  const Truth truth;
  std::map<std::string, std::vector<double>> found;

  Demonstration() {
    for (const Row& row : DemoRun::Get().Peaks()) found[row.at("scan")].push_back(std::stod(row.at("mz")));
  }
};

TEST_F(Demonstration, LinesAboveSixTimesTheNoiseAreFoundInTheirPlace) {
  double squares = 0.0;
  int lines = 0, hits = 0;
  for (const auto& [scan, strong] : truth.strong) {
    for (const double mz : strong) {
      ++lines;
      const double off = Nearest(found[scan], mz);
      if (std::abs(off) > kNear) continue;
      ++hits;
      squares += off * off;
    }
  }
  EXPECT_GT(lines, 250);
  EXPECT_GE(hits, 0.99 * lines);
  EXPECT_LE(std::sqrt(squares / hits), 0.02);
}

TEST_F(Demonstration, LessThanOnePeakASpectrumIsWhereNoLineIs) {
  int wrong = 0;
  for (const auto& [scan, places] : found) {
    for (const double mz : places) {
      if (std::abs(Nearest(truth.all.at(scan), mz)) > kNear) ++wrong;
    }
  }
  EXPECT_LT(wrong, 20);
}

}  // namespace
}  // namespace tests
