#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/SmoothRanges.h>

using namespace TslBL;
using namespace tests;

namespace {

// Ranges as "first-end:width ...".
std::string Text(const std::vector<SmoothRange>& ranges) {
  std::ostringstream out;
  for (const SmoothRange& r : ranges)
    out << (&r == ranges.data() ? "" : " ") << r.first << '-' << r.end << ':' << r.width;
  return out.str();
}

// Steps from "value:size ...".
std::vector<SmoothStep> Steps(const std::string& text) {
  std::istringstream in(text);
  std::vector<SmoothStep> steps;
  SmoothStep step;
  for (char colon; in >> step.Value >> colon >> step.Size;) steps.push_back(step);
  return steps;
}

std::string Ranges(const std::string& steps, SmoothParams::StepTransitions trans, TestCurve curve) {
  curve.smoothParams.Steps = Steps(steps);
  curve.smoothParams.StepTrans = trans;
  return Text(BuildSmoothRanges(curve));
}

// On 151 points at x = 0, 1 ... 150.
std::string Smooth(const std::string& steps) {
  return Ranges(steps, SmoothParams::Smooth, CurveOf(Count(151)));
}
std::string Staggered(const std::string& steps) {
  return Ranges(steps, SmoothParams::Staggered, CurveOf(Count(151)));
}

struct Row {
  const char* steps;
  const char* ranges;
};

}  // namespace

TEST(SmoothRanges, AreNoneWithoutSteps) { EXPECT_EQ(Smooth(""), ""); }

TEST(SmoothRanges, OfOneStepReachFromItToTheEnd) {
  const Row rows[] = {{"0:5", "0-151:5"},     {"-7:5", "0-151:5"},    {"50:6", "50-151:6"},
                      {"50.7:6", "50-151:6"}, {"150:7", "150-151:7"}, {"150.01:7", ""},
                      {"0:0", "0-151:0"}};
  for (const auto& [steps, ranges] : rows) {
    EXPECT_EQ(Smooth(steps), ranges) << steps;
    EXPECT_EQ(Staggered(steps), ranges) << steps;
  }
}

TEST(SmoothRanges, GrowByTwoFromStepToStep) {
  const Row rows[] = {
      {"0:5 100:11", "0-33:5 33-67:7 67-101:9 100-151:11"},
      // The way down, and a table out of order.
      {"0:11 100:5", "0-33:11 33-67:9 67-101:7 100-151:5"},
      {"100:11 0:5", "0-33:5 33-67:7 67-101:9 100-151:11"},
      // An odd width counts half a step less; an even one becomes odd.
      {"0:5 100:10", "0-50:5 50-101:7 100-151:10"},
      {"0:4 100:9", "0-50:5 50-101:7 100-151:9"},
      // Less than two pieces are one, with its width as it is.
      {"0:4 100:7", "0-101:4 100-151:7"},
      {"0:6 100:6", "0-101:6 100-151:6"},
      {"0:0 100:5", "0-50:1 50-101:3 100-151:5"},
  };
  for (const auto& [steps, ranges] : rows) EXPECT_EQ(Smooth(steps), ranges) << steps;
}

TEST(SmoothRanges, KeepTheLeftWidthIfStaggered) {
  const Row rows[] = {{"0:5 100:11", "0-101:5 100-151:11"},
                      {"0:6 100:12 120:3", "0-101:6 100-121:12 120-151:3"}};
  for (const auto& [steps, ranges] : rows) EXPECT_EQ(Staggered(steps), ranges) << steps;
}

TEST(SmoothRanges, BeginAtTheFirstStepAboveTheAxis) {
  const Row rows[] = {
      // Points before the first step are not smoothed.
      {"40:5 100:6", "40-101:5 100-151:6"},
      {"40.5:5 100.5:6", "40-102:5 100-151:6"},
      // Of the steps below the axis the last one gives the width.
      {"-5:3 -2:7 100:6", "0-101:7 100-151:6"},
      {"-5:3 0:7", "0-151:7"},
      {"-5:3 -4:9", "0-151:9"},
  };
  for (const auto& [steps, ranges] : rows) EXPECT_EQ(Staggered(steps), ranges) << steps;
}

TEST(SmoothRanges, EndAtTheAxis) {
  const Row rows[] = {
      {"0:5 200:11", "0-151:5"},
      {"0:5 100:7 200:9 300:11", "0-101:5 100-151:7"},
      {"0:5 150:7", "0-151:5 150-151:7"},
      {"200:5 300:7", ""},
  };
  for (const auto& [steps, ranges] : rows) EXPECT_EQ(Staggered(steps), ranges) << steps;
}

TEST(SmoothRanges, TakeTheLaterOfTwoEqualSteps) {
  EXPECT_EQ(Staggered("0:5 100:7 100:9"), "0-101:5 100-151:9");
  EXPECT_EQ(Staggered("100:9 0:5 100:7"), "0-101:5 100-151:7");
  EXPECT_EQ(Staggered("50:3 50:4"), "50-151:4");
}

TEST(SmoothRanges, HaveAPieceForEachPointIfThereAreTooFew) {
  // Two points and five pieces wanted: the width grows by 5 a point.
  EXPECT_EQ(Ranges("0:5 1:15", SmoothParams::Smooth, CurveOf("1 1 1")), "0-1:5 1-2:11 1-3:15");
  // As many pieces as points: each is as long as all of them.
  EXPECT_EQ(Ranges("0:5 1:9", SmoothParams::Smooth, CurveOf("1 1 1")), "0-2:5 2-4:7 1-3:9");
}

TEST(SmoothRanges, OfASinglePointHaveTheWidthOfItsStep) {
  EXPECT_EQ(Ranges("0:5 10:15", SmoothParams::Smooth, CurveOf("1", "3")), "0-1:5");
  EXPECT_EQ(Ranges("3:5 3:15", SmoothParams::Smooth, CurveOf("1", "3")), "0-1:15");
}

TEST(SmoothRanges, StandWhereTheStepsAreOnAnUnevenAxis) {
  const TestCurve curve = CurveOf("1 1 1 1 1", "10 11 20 40 80");
  EXPECT_EQ(Ranges("15:5 40:9", SmoothParams::Staggered, curve), "1-4:5 3-5:9");
}

TEST(SmoothRanges, AreAsManyAsPointsForHugeWidths) {
  TestCurve curve = CurveOf(Count(10));
  curve.smoothParams.Steps = {{0.0, 0xFFFFFFFF}, {5.0, 0}};
  const auto ranges = BuildSmoothRanges(curve);
  ASSERT_EQ(ranges.size(), 7u);
  EXPECT_EQ(ranges[0], (SmoothRange{0, 1, 0xFFFFFFFF}));
}
