#include <tslbl/chargestate/SeriesReply.h>

#include <gtest/gtest.h>

#include <chargestate/DeconSample.h>
#include <chargestate/FakeEngines.h>
#include <chargestate/Thrown.h>
#include <tslbl/spectrum/PeakTable.h>

using namespace tests;

namespace {

constexpr std::uint32_t kNone = 4294967295u;

// "id:charge@mz" of each peak, with "*" behind a monoisotopic one.
std::string Text(const std::vector<CSSeriesPeakInfo>& peaks) {
  std::ostringstream out;
  for (const CSSeriesPeakInfo& peak : peaks)
    out << (&peak == peaks.data() ? "" : " ") << peak.PeakId << ':' << peak.Charge << '@' << peak.MZ
        << (peak.IsMonoPeak ? "*" : "");
  return out.str();
}

std::string PeaksOf(DeconSpectrum s, const std::wstring& states) {
  AddSeriesOf(AnswerXml(SeriesXml(1000, states)), kUnresolved, s);
  return s.Series.empty() ? "none" : Text(s.Series[0].Peaks);
}

}  // namespace

TEST(SeriesReply, GivesEachPeakTheChargeOfItsState) {
  EXPECT_EQ(PeaksOf(SpectrumToDecon(), StateXml(4, 1, {0, 1}) + StateXml(3, kNone, {2})),
            "0:4@105.5 1:4@115.5* 2:3@125.5");
}

TEST(SeriesReply, TellsTheMassOfTheMonoisotopicPeakAlone) {
  DeconSpectrum s = SpectrumToDecon();
  AddSeriesOf(AnswerXml(SeriesXml(1000.5, StateXml(4, 1, {0, 1}, 998.5, 0.25))), kResolved, s);
  ASSERT_EQ(Keys(s), "R1");
  EXPECT_EQ(s.Series[0].AvgMass, 1000.5);
  EXPECT_EQ(s.Series[0].StdDev, 0.5);
  EXPECT_EQ(s.Series[0].Peaks[0].MonoMass, 0.0);
  EXPECT_EQ(s.Series[0].Peaks[0].MassDev, 0.0);
  EXPECT_EQ(s.Series[0].Peaks[1].MonoMass, 998.5);
  EXPECT_EQ(s.Series[0].Peaks[1].MassDev, 0.25);
}

TEST(SeriesReply, PutsADataPeakWhereItIsReported) {
  DeconSpectrum s = SpectrumToDecon();
  s.peaks[1].useMax = true;
  EXPECT_EQ(PeaksOf(s, StateXml(4, kNone, {0, 1})), "0:4@105.5 1:4@115");
}

TEST(SeriesReply, PutsAnOverlapPeakWhereItWasFitted) {
  EXPECT_EQ(PeaksOf(WithOverlapPeaks(), StateXml(4, 5, {4, 5, 6})), "4:4@114 5:4@117* 6:4@124");
}

TEST(SeriesReply, TakesAnIdThatNoPeakHasForTheFirstOverlapPeak) {
  EXPECT_EQ(PeaksOf(WithOverlapPeaks(), StateXml(4, 0, {7, kNone})), "7:4@114 4294967295:4@114");
}

TEST(SeriesReply, TakesIdsForOverlapPeaksWithoutAPeakTable) {
  DeconSpectrum s = WithOverlapPeaks();
  s.peaks.clear();
  EXPECT_EQ(PeaksOf(s, StateXml(4, kNone, {0, 2})), "0:4@114 2:4@124");
}

TEST(SeriesReply, RefusesAnIdThatNoPeakHasWithoutOverlapPeaks) {
  EXPECT_EQ(Thrown([] { PeaksOf(SpectrumToDecon(), StateXml(4, kNone, {4})); }),
            "Overlap peak table is empty.");
}

TEST(SeriesReply, AddsSeriesInTheirOrderAndLeavesOutThoseThatAreNotValid) {
  DeconSpectrum s = SpectrumToDecon();
  AddSeriesOf(AnswerXml(SeriesXml(1, StateXml(4, 0, {0})) + SeriesXml(2, StateXml(4, kNone, {1})) +
                        SeriesXml(3, StateXml(5, 2, {2}))),
              kResolved, s);
  EXPECT_EQ(Keys(s), "R1 R2");
  EXPECT_EQ(s.Series[1].AvgMass, 3.0);
}

TEST(SeriesReply, WithoutSeriesIsAMessage) {
  DeconSpectrum s = SpectrumToDecon();
  const std::string message = "No Charge State Deconvolution results found with current settings.";
  EXPECT_EQ(Thrown([&] { AddSeriesOf(AnswerXml(L""), kResolved, s); }), message);
  EXPECT_EQ(Thrown([&] { ReplaceSeriesBy(AnswerXml(L"<Plot/>"), {kResolved, 1}, s); }), message);
}

TEST(SeriesReply, ThatIsNoDocumentIsRefused) {
  DeconSpectrum s = SpectrumToDecon();
  EXPECT_EQ(Thrown([&] { AddSeriesOf(L"", kResolved, s); }), "Error reading XML content.");
}

TEST(SeriesReply, ReplacesASeries) {
  DeconSpectrum s = WithOverlapPeaks();
  s.CSAddSeries(kResolved, 1000, 0.25, PeaksAt("1m"));
  s.CSAddSeries(kUnresolved, 2000, 0.25, PeaksAt("1 2"));
  ReplaceSeriesBy(AnswerXml(SeriesXml(2500, StateXml(7, kNone, {2, 3}))), {kUnresolved, 1}, s);
  EXPECT_EQ(Keys(s), "R1 U1");
  EXPECT_EQ(s.Series[0].AvgMass, 1000.0);
  EXPECT_EQ(s.Series[1].AvgMass, 2500.0);
  EXPECT_EQ(s.Series[1].StdDev, 0.5);
  EXPECT_EQ(Text(s.Series[1].Peaks), "2:7@125.5 3:7@135.5");
}

TEST(SeriesReply, OfSeveralSeriesTheLastOneReplaces) {
  DeconSpectrum s = SpectrumToDecon();
  s.CSAddSeries(kResolved, 1000, 0.25, PeaksAt("1m"));
  ReplaceSeriesBy(AnswerXml(SeriesXml(2, StateXml(7, 0, {0})) + SeriesXml(3, StateXml(7, 0, {0}))),
                  {kResolved, 1}, s);
  EXPECT_EQ(s.Series[0].AvgMass, 3.0);
}

TEST(SeriesReply, ThatIsNotValidLeavesASeries) {
  DeconSpectrum s = SpectrumToDecon();
  s.CSAddSeries(kResolved, 1000, 0.25, PeaksAt("1m"));
  ReplaceSeriesBy(AnswerXml(SeriesXml(2, StateXml(7, kNone, {0}))), {kResolved, 1}, s);
  EXPECT_EQ(s.Series[0].AvgMass, 1000.0);
}
