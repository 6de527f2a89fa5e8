#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/SpectrumPlot.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using TslTool::LoadedSpectrum;
using TslTool::SpectrumPlot;

LoadedSpectrum Evaluated() {
  LoadedSpectrum loaded = EvaluatedScan(5);
  loaded.measured = loaded.spectrum->yAxis;
  return loaded;
}

bool IsXml(const std::string& text) {
  return static_cast<bool>(pugi::xml_document().load_string(text.c_str()));
}

TEST(SpectrumPlot, NamesTheTallestPeaks) {
  const std::string plot = SpectrumPlot(Evaluated(), "demo", {});
  EXPECT_TRUE(IsXml(plot));
  for (const char* text : {"demo", "measured", "evaluated", "baseline, noise", "m/z", "195.08", "322.0"})
    EXPECT_THAT(plot, HasSubstr(text));
}

TEST(SpectrumPlot, ShowsOnlyItsView) {
  const std::string plot = SpectrumPlot(Evaluated(), "demo", TslTool::RealRange{190.0, 200.0});
  EXPECT_THAT(plot, HasSubstr("195.08"));
  EXPECT_THAT(plot, HasSubstr("196.0"));
  EXPECT_THAT(plot, Not(HasSubstr("322.0")));
}

TEST(SpectrumPlot, HasABoundedSize) {
  LoadedSpectrum loaded = Evaluated();
  auto& spectrum = *loaded.spectrum;
  for (int i = 0; i < 400000; ++i) {
    spectrum.xAxis.push_back(spectrum.xAxis.back() + 0.01);
    for (auto* values : {&spectrum.yAxis, &spectrum.baseline, &spectrum.noise, &loaded.measured})
      values->push_back(i % 977);
  }
  EXPECT_LT(SpectrumPlot(loaded, "demo", {}).size(), 400000U);
}

TEST(SpectrumPlot, OfARawSpectrumIsItsCurve) {
  LoadedSpectrum loaded = LoadScan(5);
  const std::string plot = SpectrumPlot(loaded, "raw", {});
  EXPECT_TRUE(IsXml(plot));
  EXPECT_THAT(plot, HasSubstr("<path"));
}

TEST(SpectrumPlot, IsWrittenBesideTheTable) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/scan.svg";
  const Outcome outcome =
      RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5", "--plot", file, "--view", "190-200", "--quiet"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("195.08"));
  EXPECT_TRUE(IsXml(ReadFile(file)));
}

TEST(SpectrumPlot, OfSeveralSpectraIsRefused) {
  const TempFile folder("x", "");
  const Outcome outcome =
      RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5-6", "--plot", folder.Folder() + "/scan.svg"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("--plot draws one spectrum, and there are several; choose one with --scan"));
  EXPECT_THAT(NamesIn(folder.Folder()), testing::ElementsAre("x"));
}

TEST(SpectrumPlot, WhatCannotBeDrawnIsNamed) {
  const std::string run = DemoRun::Get().Run();
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/scan.svg";
  const Outcome outside = RunTool({"peaks", run, "--scan", "5", "--plot", file, "--view", "5000-6000"});
  EXPECT_EQ(outside.status, 1);
  EXPECT_THAT(outside.err, HasSubstr("scan 5: there are no two points from m/z 5000 to 6000 to draw"));
  EXPECT_EQ(RunTool({"peaks", run, "--view", "1-2"}).status, 2);
  EXPECT_EQ(RunTool({"peaks", run, "--plot", run}).status, 2);
  EXPECT_EQ(RunTool({"peaks", run, "--plot", "-"}).status, 2);
}

}  // namespace
}  // namespace tests
