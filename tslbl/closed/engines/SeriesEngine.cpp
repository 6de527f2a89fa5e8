#include <tslbl/closed/engines/SeriesEngine.h>

#include <tslbl/closed/engines/EngineDocument.h>
#include <tslbl/closed/engines/FailureText.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace TslMath {
namespace {

ReplySeries ReplyOf(const ChargeSeries& series) {
  ReplySeries reply{series.mass, series.standardDeviation, {}};
  for (const SeriesMember& member : series.members)
    reply.states.push_back({member.charge, member.deviation, member.peak, member.mass, {member.peak}});
  return reply;
}

// Where the monoisotopic peak is too weak to be seen, the lightest one that is stands for it.
ReplySeries ReplyOf(const Species& species) {
  ReplySeries reply{species.monoMass, species.standardDeviation, {}};
  for (const IsotopeState& state : species.states) {
    ReplyState one{state.charge, state.deviation, state.isotopes.front().peak, state.monoMass, {}};
    one.peaks.reserve(state.isotopes.size());
    for (const MatchedIsotope& isotope : state.isotopes) one.peaks.push_back(isotope.peak);
    reply.states.push_back(std::move(one));
  }
  return reply;
}

template <class Found>
std::wstring Reply(const Found& found, const PeakDocument& document) {
  std::vector<ReplySeries> series;
  series.reserve(found.size());
  for (const auto& one : found) series.push_back(ReplyOf(one));
  return WriteSeries(series, document.ids);
}

template <class Found>
std::wstring Reply(const std::optional<Found>& found, const PeakDocument& document) {
  return Reply(found ? std::vector{*found} : std::vector<Found>(), document);
}

struct ResolvedMethod {
  using Prefs = ResolvedPrefs;
  static Prefs Read(const std::wstring& document) { return ReadResolvedPrefs(document); }
  static auto All(const PeakDocument& document, const Prefs& prefs) {
    return FindAllSpecies(document.peaks, prefs);
  }
  static auto Of(const PeakDocument& document, const Prefs& prefs) {
    return FindSpeciesOf(document.peaks, prefs, document.seeds);
  }
  static auto Anew(const PeakDocument& document, const Prefs& prefs) {
    return RecalculateSpecies(document.peaks, prefs, document.seedMass, document.seeds);
  }
};

struct UnresolvedMethod {
  using Prefs = UnresolvedPrefs;
  static Prefs Read(const std::wstring& document) { return ReadUnresolvedPrefs(document); }
  static auto All(const PeakDocument& document, const Prefs& prefs) {
    return FindAllSeries(document.peaks, prefs);
  }
  static auto Of(const PeakDocument& document, const Prefs& prefs) {
    return FindSeriesOf(document.peaks, prefs, document.seeds);
  }
  static auto Anew(const PeakDocument& document, const Prefs& prefs) {
    return RecalculateSeries(document.peaks, prefs, document.seedMass, document.seeds);
  }
};

template <class Method>
class OwnSeriesEngine final : public SeriesEngine {
 public:
  std::wstring GetLastError() override { return failure_.Text(); }

  void SetPrefs(const std::wstring& document) override {
    failure_.Keep([&] { prefs_ = Method::Read(document); });
  }
  std::wstring AutoSeries(const std::wstring& document) override { return Answer(document, Method::All); }
  std::wstring FindSeries(const std::wstring& document) override { return Answer(document, Method::Of); }
  std::wstring RecalcSeries(const std::wstring& document) override { return Answer(document, Method::Anew); }

 private:
  template <class Find>
  std::wstring Answer(const std::wstring& document, Find find) {
    return failure_.Keep([&] {
      const PeakDocument read = ReadPeaks(document);
      return Reply(find(read, prefs_), read);
    });
  }

  typename Method::Prefs prefs_;
  FailureText failure_;
};

[[maybe_unused]] const bool kAreRegistered = [] {
  RegisterOwnSeriesEngines();
  return true;
}();

}  // namespace

void RegisterOwnSeriesEngines() {
  auto& registry = TslCommon::ComponentRegistry::Instance();
  registry.Register(SeriesEngine::kResolvedClassId,
                    [] { return std::make_unique<OwnSeriesEngine<ResolvedMethod>>(); });
  registry.Register(SeriesEngine::kUnresolvedClassId,
                    [] { return std::make_unique<OwnSeriesEngine<UnresolvedMethod>>(); });
}

}  // namespace TslMath
