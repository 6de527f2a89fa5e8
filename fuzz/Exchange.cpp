// What engines of charge state deconvolution answer, and what they are asked: any text. The first byte picks
// who reads it. An answer gives series that are valid and can be shown, or is refused; what an engine of our
// own is asked it answers, or says why not.

#include <fuzz/Input.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/SeriesReply.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/engines/MassPlotEngine.h>
#include <tslbl/closed/engines/SeriesEngine.h>
#include <tslbl/spectrum/PeakTable.h>
#include <cmath>

using namespace TslBL;
using namespace fuzz;

namespace {

// Points at m/z 100, 101 ... with four data peaks, under the second of which two overlap peaks were fitted.
DeconSpectrum Deconvolved() {
  DeconSpectrum s;
  s.yAxis.assign(40, 3.0);
  for (std::size_t i = 0; i < s.yAxis.size(); ++i) s.xAxis.push_back(100.0 + static_cast<double>(i));
  s.baseline = s.noise = std::vector<double>(s.yAxis.size(), 1.0);
  for (std::uint32_t i = 0; i < 4; ++i) {
    PeakInfo& row = s.peaks.emplace_back();
    row.startIdx = 10 * i;
    row.apexIdx = 10 * i + 5;
    row.endIdx = 10 * i + 9;
    row.centroidIdx = row.maxIdx = row.apexIdx;
  }
  for (const double position : {13.5, 16.5}) {
    OverlapPeakInfo& fit = s.overlapPeaks.emplace_back();
    fit.GroupId = fit.DataPeakId = 1;
    fit.Position = position;
    fit.Height = fit.FWHM = 2.0;
  }
  s.SyncOverlapGroups();
  s.status = Curve::STATUS_X | Curve::STATUS_Y | Curve::STATUS_PEAKS | Curve::STATUS_CSDECON;
  return s;
}

void Show(const DeconSpectrum& s, std::uint32_t index) {
  const CSSeriesInfo& series = s.Series[index];
  Require(DeconSpectrum::IsSeriesValid(series), "a series that was added is valid");
  Require(
      DeconSpectrum::CSSeriesLabelToObj(DeconSpectrum::CSSeriesObjToLabel(series.Series)) == series.Series,
      "a label gives its series back");
  CSPeakIndicators shown;
  if (!s.BuildCSPeakIndictors(index, shown)) return;
  for (const CSSeriesPeakInfo& peak : series.Peaks)
    Require(std::ranges::any_of(shown.Indicators,
                                [&](const CSPeakIndicator& i) { return i.Found && i.Charge == peak.Charge; }),
            "the charge of a peak is shown as found");
}

void CheckAnswer(const std::wstring& text) {
  DeconSpectrum s = Deconvolved();
  Accepts([&] { AddSeriesOf(text, CSSeries::Resolved, s); });
  Accepts([&] { AddSeriesOf(text, CSSeries::Unresolved, s); });
  const std::vector<CSSeries> keys = s.QCSSeriesArray();
  if (!keys.empty()) Accepts([&] { ReplaceSeriesBy(text, keys.back(), s); });
  Require(s.QCSSeriesArray() == keys, "a series that gets other content stays");
  for (std::uint32_t i = 0; i < keys.size(); ++i) Show(s, i);
  std::vector<MZPeak> table = CreateMZPeakTable(s);
  s.CSAddSeriesInfoToPeakTable(table);
}

void CheckPlot(const std::wstring& text) {
  std::vector<PlotPoint> points;
  if (!Accepts([&] { points = DeconXMLParser(text).QPlot(); })) return;
  DeconXMLParser written;
  written.WPlot(points);
  Require(DeconXMLParser(written.QText()).QPlot() == points, "a plot that was written is read as the same");
  DeconSpectrum s = Deconvolved();
  for (const PlotPoint& point : points) s.MassX.push_back(point.x);
  for (const PlotPoint& point : points)
    Require(s.QCSMassCurveIdx(point.x) < points.size(), "a mass has a point on its curve");
}

void CheckDocument(const std::wstring& text) {
  DeconXMLParser document;
  if (!Accepts([&] { document.WText(text); })) return;
  const DeconXMLParser again(document.QText());
  Require(DeconXMLParser(again.QText()).QText() == again.QText(), "a document that was written stays");
  Accepts([&] { document.WMZPeaks({{1, 2.5}}); });
  Accepts([&] { document.WPlot({{1.5, 2.5}}, 1.0, 2); });
}

// Runs a call of an engine; false if it failed, and then it says why.
template <class Engine, class Call>
bool Answers(Engine& engine, Call call) {
  try {
    call();
    return true;
  } catch (const TslCommon::ComError&) {
    Require(!engine.GetLastError().empty(), "an engine that fails says why");
    return false;
  }
}

template <class Engine>
std::unique_ptr<Engine> MakeEngine(const char* classId) {
  return TslCommon::ComponentRegistry::Instance().CreateAs<Engine>(classId);
}

void AskEngine(const char* classId, const std::wstring& text) {
  const auto engine = MakeEngine<TslMath::SeriesEngine>(classId);
  Answers(*engine, [&] { engine->SetPrefs(text); });
  for (const auto ask : {&TslMath::SeriesEngine::AutoSeries, &TslMath::SeriesEngine::FindSeries,
                         &TslMath::SeriesEngine::RecalcSeries}) {
    std::wstring answer;
    if (Answers(*engine, [&] { answer = (*engine.*ask)(text); })) DeconXMLParser(answer).QSeries();
  }
}

void AskResolved(const std::wstring& text) { AskEngine(TslMath::SeriesEngine::kResolvedClassId, text); }
void AskUnresolved(const std::wstring& text) { AskEngine(TslMath::SeriesEngine::kUnresolvedClassId, text); }

void AskPlot(const std::wstring& text) {
  const auto engine = MakeEngine<TslMath::MassPlotEngine>(TslMath::MassPlotEngine::kClassId);
  Answers(*engine, [&] { engine->AddPeakPlot(text); });
  std::wstring plot;
  if (Answers(*engine, [&] { plot = engine->GetSeriesPlot(); }))
    Answers(*engine, [&] { engine->AddSeriesPlot(plot); });
  Answers(*engine, [&] { engine->AddSeriesPlot(text); });
  if (Answers(*engine, [&] { plot = engine->GetResultPlot(); })) DeconXMLParser(plot).QPlot();
}

constexpr void (*kReaders[])(const std::wstring& text) = {CheckAnswer, CheckPlot,     CheckDocument,
                                                          AskResolved, AskUnresolved, AskPlot};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const auto read = kReaders[input.Below(std::size(kReaders))];
  read(TslCommon::FromUtf8(input.Rest()));
  return 0;
}
