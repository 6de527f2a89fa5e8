#include <tslbl/closed/engines/MassPlotEngine.h>

#include <gtest/gtest.h>
#include <tslbl/closed/engines/EngineDocument.h>

using namespace TslMath;

namespace {

std::unique_ptr<MassPlotEngine> Registered() {
  return TslCommon::ComponentRegistry::Instance().CreateAs<MassPlotEngine>(MassPlotEngine::kClassId);
}

std::wstring Triangle(const std::wstring& charge = L"10") {
  return L"<CSDecon><Plot adductMass=\"1\" charge=\"" + charge +
         L"\"><Point x=\"1000\" y=\"0\" /><Point x=\"1000.1\" y=\"50\" /><Point x=\"1000.2\" y=\"0\" />"
         L"</Plot></CSDecon>";
}

double AreaOf(const MassCurve& curve) {
  double area = 0;
  for (std::size_t i = 1; i < curve.mass.size(); ++i)
    area += (curve.mass[i] - curve.mass[i - 1]) * (curve.density[i] + curve.density[i - 1]) / 2;
  return area;
}

TEST(OwnMassPlotEngine, DrawsThePeaksOfASeries) {
  const auto engine = Registered();
  engine->AddPeakPlot(Triangle());
  engine->AddPeakPlot(Triangle(L"5"));
  const MassCurve curve = ReadMassCurve(engine->GetSeriesPlot());
  EXPECT_NEAR(AreaOf(curve), 10, 1e-6);
  EXPECT_NEAR(curve.mass.back(), 9992, 1);
  EXPECT_NEAR(curve.mass.front(), 4995, 1);
}

TEST(OwnMassPlotEngine, BeginsAnewWithEachSeries) {
  const auto engine = Registered();
  engine->AddPeakPlot(Triangle());
  engine->GetSeriesPlot();
  EXPECT_EQ(engine->GetSeriesPlot(), L"<CSDecon><Plot></Plot></CSDecon>");
}

TEST(OwnMassPlotEngine, PutsSeriesTogether) {
  const auto engine = Registered();
  for (const wchar_t* charge : {L"10", L"5"}) {
    engine->AddPeakPlot(Triangle(charge));
    engine->AddSeriesPlot(engine->GetSeriesPlot());
  }
  const MassCurve all = ReadMassCurve(engine->GetResultPlot());
  EXPECT_NEAR(AreaOf(all), 10, 1e-6);
  EXPECT_EQ(ReadMassCurve(engine->GetResultPlot()).density, all.density);
}

TEST(OwnMassPlotEngine, TakesAPeakWithoutPoints) {
  const auto engine = Registered();
  engine->AddPeakPlot(L"<CSDecon><Plot adductMass=\"1\" charge=\"2\" /></CSDecon>");
  engine->AddSeriesPlot(engine->GetSeriesPlot());
  EXPECT_TRUE(ReadMassCurve(engine->GetResultPlot()).mass.empty());
}

TEST(OwnMassPlotEngine, SaysWhatIsWrong) {
  const auto engine = Registered();
  EXPECT_THROW(engine->AddPeakPlot(L"<CSDecon />"), TslCommon::ComError);
  EXPECT_EQ(engine->GetLastError(), L"The document has no element Plot.");
  EXPECT_THROW(engine->AddPeakPlot(L"<CSDecon><Plot adductMass=\"1\" /></CSDecon>"), TslCommon::ComError);
  EXPECT_EQ(engine->GetLastError(), L"Plot has no charge.");
  EXPECT_THROW(engine->AddSeriesPlot(
                   L"<CSDecon><Plot><Point x=\"2\" y=\"1\" /><Point x=\"1\" y=\"1\" /></Plot></CSDecon>"),
               TslCommon::ComError);
  EXPECT_EQ(engine->GetLastError(), L"Plot: the masses do not ascend.");
}

TEST(OwnMassPlotEngine, ComesBackInThePlaceOfAnother) {
  TslCommon::ComponentRegistry::Instance().Register(MassPlotEngine::kClassId, nullptr);
  RegisterOwnMassPlotEngine();
  EXPECT_NE(Registered(), nullptr);
}

}  // namespace
