#include <tslbl/chargestate/DeconRun.h>

#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/SaveDebugFile.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/RunForUser.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {
namespace {

using Points = std::vector<PlotPoint>;

template <class Engine>
std::unique_ptr<Engine> MakeEngine(const char* classId) {
  try {
    return ComponentRegistry::Instance().CreateAs<Engine>(classId);
  } catch (const ComError&) {
    ThrowMessage(kNoSeriesEngine);
  } catch (const std::exception&) {  // of the application that registered it
    ThrowMessage(kNoSeriesEngine);
  }
}

// Runs `work` with an engine; what the engine could not do it says itself.
template <class Engine, class Work>
auto Ask(Engine& engine, Work work) {
  try {
    return work(engine);
  } catch (const ComError&) {
    throw std::runtime_error(ToUtf8(engine.GetLastError()));
  }
}

std::wstring DebugName(CSSeries::Types type, const wchar_t* document) {
  return (type == CSSeries::Resolved ? L"Res" : L"Unres") + std::wstring(document);
}

void SetPrefs(SeriesEngine& engine, CSSeries::Types type, const std::wstring& document) {
  SaveDebugFile(DebugName(type, L"Params_Set"), document);
  Ask(engine, [&](SeriesEngine& e) { e.SetPrefs(document); });
}

SeriesEngine* EngineOf(const DeconRun& run, CSSeries::Types type) {
  if (type == CSSeries::Resolved) return run.resolved.get();
  return type == CSSeries::Unresolved ? run.unresolved.get() : nullptr;
}

struct CallRow {
  std::wstring (SeriesEngine::*call)(const std::wstring& document);
  const wchar_t* in;
  const wchar_t* out;
};

// In the order of SeriesCall.
constexpr CallRow kCalls[] = {
    {&SeriesEngine::AutoSeries, L"AutoMz_In", L"AutoSeries_Out"},
    {&SeriesEngine::FindSeries, L"FindSeries_In", L"FindSeries_Out"},
    {&SeriesEngine::RecalcSeries, L"RecalcSeries_In", L"RecalcSeries_Out"},
};

// The points that a data peak covers; an overlap peak has none of its own.
Points PointsOf(const DeconSpectrum& spectrum, std::uint32_t peakId) {
  Points points;
  if (!spectrum.IsMzPkId(peakId)) return points;
  const std::size_t count = std::min(spectrum.xAxis.size(), spectrum.yAxis.size());
  const PeakInfo& peak = spectrum.peaks[peakId];
  for (std::size_t i = peak.startIdx; i <= peak.endIdx && i < count; ++i)
    points.push_back({spectrum.xAxis[i], spectrum.yAxis[i]});
  return points;
}

void AddSeriesPlot(const DeconSpectrum& spectrum, const CSSeriesInfo& series, MassPlotEngine& engine,
                   DeconXMLParser& parser) {
  const AdductIonInfo ion = spectrum.CSParams.GetAdductIonInfo();
  const double adductMass = series.Series.Type == CSSeries::Resolved ? ion.MonoMass : ion.AvgMass;
  for (const CSSeriesPeakInfo& peak : series.Peaks) {
    parser.Clear();
    parser.WPlot(PointsOf(spectrum, peak.PeakId), adductMass, peak.Charge);
    engine.AddPeakPlot(parser.QText());
  }
  engine.AddSeriesPlot(engine.GetSeriesPlot());
}

Points PlotAllSeries(const DeconSpectrum& spectrum, MassPlotEngine& engine) {
  DeconXMLParser parser;
  for (const CSSeriesInfo& series : spectrum.Series)
    if (!series.Peaks.empty()) AddSeriesPlot(spectrum, series, engine, parser);
  parser.WText(engine.GetResultPlot());
  return parser.QPlot();
}

}  // namespace

void SetUpEngines(DeconRun& run, bool wantResolved, bool wantUnresolved) {
  const ChargeStateParams& params = run.spectrum.CSParams;
  if (wantResolved) {
    run.resolved = MakeEngine<SeriesEngine>(SeriesEngine::kResolvedClassId);
    DeconXMLParser parser;
    parser.WResPrefs(MakeResPrefs(params));
    SetPrefs(*run.resolved, CSSeries::Resolved, parser.QText());
  }
  if (wantUnresolved) {
    run.unresolved = MakeEngine<SeriesEngine>(SeriesEngine::kUnresolvedClassId);
    DeconXMLParser parser;
    parser.WUnresPrefs(MakeUnresPrefs(params));
    SetPrefs(*run.unresolved, CSSeries::Unresolved, parser.QText());
  }
  run.plot = MakeEngine<MassPlotEngine>(MassPlotEngine::kClassId);
}

bool HasEngine(const DeconRun& run, CSSeries::Types type) { return EngineOf(run, type) != nullptr; }

std::wstring AskForSeries(const DeconRun& run, CSSeries::Types type, SeriesCall call,
                          const std::wstring& document) {
  const CallRow& row = kCalls[static_cast<std::size_t>(call)];
  SaveDebugFile(DebugName(type, row.in), document);
  std::wstring reply =
      Ask(*EngineOf(run, type), [&](SeriesEngine& engine) { return (engine.*row.call)(document); });
  SaveDebugFile(DebugName(type, row.out), reply);
  return reply;
}

void DrawMassCurve(const DeconRun& run) {
  DeconSpectrum& spectrum = run.spectrum;
  if (std::ranges::all_of(spectrum.Series, [](const CSSeriesInfo& series) { return series.Peaks.empty(); })) {
    spectrum.MassX.clear();
    spectrum.MassY.clear();
    ThrowMessage(kNoSeriesFound);
  }
  const Points points =
      Ask(*run.plot, [&](MassPlotEngine& engine) { return PlotAllSeries(spectrum, engine); });
  spectrum.MassX.clear();
  spectrum.MassY.clear();
  for (const PlotPoint& point : points) {
    spectrum.MassX.push_back(point.x);
    spectrum.MassY.push_back(point.y);
  }
}

}  // namespace TslBL
