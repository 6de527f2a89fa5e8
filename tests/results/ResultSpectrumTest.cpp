#include <tslbl/results/ResultSpectrum.h>

#include <gtest/gtest.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/curve/CurvePeak.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

using namespace TslBL;

namespace {

constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();

// m/z 100, 101, 102 ... by a straight line.
Tune TuneOf(const std::vector<MZCalPt>& points = {{L"Low", 0.0, 0.0}, {L"High", 3000.0, 60000.0}}) {
  Tune tune;
  tune.MZCalPts = points;
  tune.ControlData.MZLow = 100.0;
  tune.ControlData.MZHi = 3000.0;
  tune.ControlData.MZStepSize = 1.0;
  return tune;
}

// Everything lies between two points of one m/z.
Tune BrokenTune() { return TuneOf({{L"A", 100.0, 0.0}, {L"B", 100.0, 60000.0}}); }

RawSpectrum RawOf(const std::vector<double>& counts) {
  RawSpectrum raw;
  raw.info = {};
  raw.info.Id = 4;
  raw.info.TimeStamp = 90000;
  raw.info.TuneId = 6;
  raw.info.TIC = 7.5;
  raw.counts = counts;
  return raw;
}

// Two Gaussian peaks above a background that goes up and down.
RawSpectrum RawWithPeaks() {
  std::vector<double> counts(400);
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const double x = static_cast<double>(i);
    counts[i] = 10.0 + (i % 2 == 0 ? 1.0 : -1.0) + 1000.0 * std::exp(-0.5 * (x - 100) * (x - 100) / 25.0) +
                500.0 * std::exp(-0.5 * (x - 300) * (x - 300) / 25.0);
  }
  return RawOf(counts);
}

std::wstring Added(const Tune& tune, const RawSpectrum& raw, bool profile, bool centroid,
                   std::uint32_t tuneId = 6) {
  XMLBuilder builder;
  AddRawSpectrum(builder, tuneId, tune, raw, profile, centroid);
  return builder.QXML();
}

std::unique_ptr<Spectrum> Created(const RawSpectrum& raw) {
  return std::unique_ptr<Spectrum>(CreateSpectrum(TuneOf(), raw, nullptr));
}

bool HasChild(const std::wstring& xml, const wchar_t* name) {
  XMLParser parser;
  EXPECT_TRUE(parser.LoadText(xml));
  EXPECT_TRUE(parser.StartNode(L"RawSpec"));
  return parser.StartNode(name);
}

std::wstring PeaksOf(Spectrum& spectrum) {
  XMLBuilder builder;
  FormatPartialCentroid(spectrum, builder);
  return builder.QXML();
}

}  // namespace

TEST(AddRawSpectrum, WritesTheHeaderAloneWithoutFlags) {
  EXPECT_EQ(Added(TuneOf(), RawWithPeaks(), false, false),
            L"<RawSpec Id=\"4\" TimeStamp=\"90000\" TIC=\"7.5\" TuneId=\"6\" />\n");
}

TEST(AddRawSpectrum, DoesNotLookAtTheCalibrationWithoutFlags) {
  EXPECT_EQ(Added(BrokenTune(), RawOf({1, 2, 3}), false, false),
            L"<RawSpec Id=\"4\" TimeStamp=\"90000\" TIC=\"7.5\" TuneId=\"6\" />\n");
}

TEST(AddRawSpectrum, WritesTheLargestNumbersAndSixDigitsOfTheTic) {
  RawSpectrum raw = RawOf({});
  raw.info.Id = raw.info.TimeStamp = kMost;
  raw.info.TIC = 123456789.0;
  EXPECT_EQ(Added(TuneOf(), raw, false, false, kMost),
            L"<RawSpec Id=\"4294967295\" TimeStamp=\"4294967295\" TIC=\"1.23457e+08\" TuneId=\"4294967295\" "
            L"/>\n");
}

TEST(AddRawSpectrum, WritesTheGivenTuneIdAndTheSameSpectrum) {
  std::wstring other = Added(TuneOf(), RawWithPeaks(), true, true, 99);
  const std::wstring id = L"TuneId=\"99\"";
  ASSERT_NE(other.find(id), std::wstring::npos);
  other.replace(other.find(id), id.size(), L"TuneId=\"6\"");
  EXPECT_EQ(other, Added(TuneOf(), RawWithPeaks(), true, true));
}

TEST(AddRawSpectrum, WritesPointsOnTheCalibratedAxis) {
  EXPECT_EQ(Added(TuneOf(), RawOf({1, 0, 2.5}), true, false),
            L"<RawSpec Id=\"4\" TimeStamp=\"90000\" TIC=\"7.5\" TuneId=\"6\">\n"
            L"  <Profile Count=\"3\">\n"
            L"    <X>100 101 102</X>\n"
            L"    <Y>1 0 2.5</Y>\n"
            L"  </Profile>\n"
            L"</RawSpec>\n");
}

TEST(AddRawSpectrum, WritesTheSamePointsAsTheSpectrumHas) {
  const RawSpectrum raw = RawWithPeaks();
  const auto spectrum = Created(raw);
  XMLBuilder builder;
  builder.StartNode(L"RawSpec");
  builder.WAttribute(L"Id", L"4");
  builder.WAttribute(L"TimeStamp", L"90000");
  builder.WAttribute(L"TIC", L"7.5");
  builder.WAttribute(L"TuneId", L"6");
  builder.WProfileNode(spectrum->xAxis, spectrum->yAxis);
  FormatPartialCentroid(*spectrum, builder);
  builder.EndNode();
  EXPECT_EQ(Added(TuneOf(), raw, true, true), builder.QXML());
}

TEST(AddRawSpectrum, WritesWhatItIsAskedFor) {
  const RawSpectrum raw = RawWithPeaks();
  for (const bool profile : {false, true})
    for (const bool centroid : {false, true}) {
      EXPECT_EQ(HasChild(Added(TuneOf(), raw, profile, centroid), L"Profile"), profile);
      EXPECT_EQ(HasChild(Added(TuneOf(), raw, profile, centroid), L"Peaks"), centroid);
    }
}

TEST(AddRawSpectrum, LeavesTheBuilderWhereItWas) {
  XMLBuilder builder;
  builder.StartNode(L"Spectra");
  AddRawSpectrum(builder, 1, TuneOf(), RawWithPeaks(), true, true);
  builder.WAttribute(L"Count", L"1");
  EXPECT_EQ(builder.QXML().rfind(L"<Spectra Count=\"1\">\n  <RawSpec Id=", 0), 0u);
}

TEST(AddRawSpectrum, LetsFailuresPassAndItsElementOpen) {
  for (const auto& [profile, centroid] : {std::pair{true, false}, {false, true}}) {
    XMLBuilder builder;
    try {
      AddRawSpectrum(builder, 6, BrokenTune(), RawOf({1, 2, 3}), profile, centroid);
      ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& e) {
      EXPECT_STREQ(e.what(), "Divide by zero error");
    }
    builder.WNode(L"After", L"");
    EXPECT_EQ(builder.QXML(),
              L"<RawSpec Id=\"4\" TimeStamp=\"90000\" TIC=\"7.5\" TuneId=\"6\">\n"
              L"  <After />\n"
              L"</RawSpec>\n");
  }
}

TEST(AddRawSpectrum, OfNoPointsHasAnEmptyProfileAndNoPeaks) {
  EXPECT_EQ(Added(TuneOf(), RawOf({}), true, true),
            L"<RawSpec Id=\"4\" TimeStamp=\"90000\" TIC=\"7.5\" TuneId=\"6\">\n"
            L"  <Profile Count=\"0\">\n"
            L"    <X></X>\n"
            L"    <Y></Y>\n"
            L"  </Profile>\n"
            L"</RawSpec>\n");
}

TEST(FormatPartialCentroid, WritesThePeaksOfTheParametersAtHand) {
  const auto spectrum = Created(RawWithPeaks());
  const auto same = Created(RawWithPeaks());
  Changed changed;
  std::wstring error;
  ASSERT_TRUE(ExecutePeakDetect(*same, changed, error));
  ASSERT_FALSE(same->peaks.empty());
  XMLBuilder expected;
  AddCurvePeaks(*same, expected);
  EXPECT_EQ(PeaksOf(*spectrum), expected.QXML());
}

TEST(FormatPartialCentroid, WritesPeaksThatReadBack) {
  const auto spectrum = Created(RawWithPeaks());
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(PeaksOf(*spectrum)));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"Peaks", count));
  ASSERT_EQ(count, 2);
  CurvePeak first, second;
  first.Serialize(parser);
  second.Serialize(parser);
  EXPECT_NEAR(first.CentroidX, 200.0, 0.2);
  EXPECT_NEAR(second.CentroidX, 400.0, 0.2);
}

TEST(FormatPartialCentroid, WritesAnEmptyElementWithoutPeaks) {
  const auto spectrum = Created(RawOf(std::vector<double>(300, 5.0)));
  EXPECT_EQ(PeaksOf(*spectrum), L"<Peaks />\n");
}

TEST(FormatPartialCentroid, WritesNothingWherePeaksCannotBeFound) {
  Spectrum empty;
  EXPECT_EQ(PeaksOf(empty), L"");
}

TEST(FormatPartialCentroid, WritesTheOldTableOfAFrozenSpectrum) {
  const auto spectrum = Created(RawWithPeaks());
  const std::wstring found = PeaksOf(*spectrum);
  ASSERT_EQ(spectrum->peaks.size(), 2U);
  spectrum->peaks.pop_back();
  spectrum->status |= Spectrum::STATUS_OPD;
  const std::wstring written = PeaksOf(*spectrum);
  EXPECT_EQ(spectrum->peaks.size(), 1U);
  XMLBuilder expected;
  AddCurvePeaks(*spectrum, expected);
  EXPECT_EQ(written, expected.QXML());
  EXPECT_NE(written, found);
}

TEST(FormatPartialCentroid, WritesNothingOfAFrozenSpectrumWithoutATable) {
  const auto spectrum = Created(RawWithPeaks());
  spectrum->status |= Spectrum::STATUS_CSDECON;
  EXPECT_EQ(PeaksOf(*spectrum), L"");
}
