#pragma once
// Engines of charge state deconvolution that do what a test tells them, in the place of any others.

#include <tslbl/closed/engines/MassPlotEngine.h>
#include <tslbl/closed/engines/SeriesEngine.h>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tests {

using TslCommon::ComError;
using TslMath::MassPlotEngine;
using TslMath::SeriesEngine;

// While one lives, its engines are what the library finds. A call is named "Resolved.AutoSeries",
// "Plot.GetResultPlot" and so on.
class FakeEngines {
 public:
  std::map<std::string, std::wstring> answers;
  // What a call does before it answers.
  std::map<std::string, std::function<void()>> doing;
  // All that happened: "+Resolved" for an engine made, calls, "-Resolved" for one given up.
  std::vector<std::string> log;
  // The documents that the calls were given.
  std::map<std::string, std::vector<std::wstring>> sent;

  FakeEngines() {
    answers["Resolved.GetLastError"] = L"resolved engine failed";
    answers["Unresolved.GetLastError"] = L"unresolved engine failed";
    answers["Plot.GetLastError"] = L"plot engine failed";
    answers["Plot.GetSeriesPlot"] = L"<CSDecon><Plot><Point x='1' y='2'/></Plot></CSDecon>";
    answers["Plot.GetResultPlot"] =
        L"<CSDecon><Plot><Point x='1000' y='5'/><Point x='1000.5' y='7'/></Plot></CSDecon>";
    Registry().Register(SeriesEngine::kResolvedClassId,
                        [this] { return std::make_unique<Series>(*this, "Resolved"); });
    Registry().Register(SeriesEngine::kUnresolvedClassId,
                        [this] { return std::make_unique<Series>(*this, "Unresolved"); });
    Registry().Register(MassPlotEngine::kClassId, [this] { return std::make_unique<Plot>(*this); });
  }
  FakeEngines(const FakeEngines&) = delete;
  FakeEngines& operator=(const FakeEngines&) = delete;
  ~FakeEngines() {
    TslMath::RegisterOwnSeriesEngines();
    TslMath::RegisterOwnMassPlotEngine();
  }

  void Fail(const std::string& call) {
    doing[call] = [] { throw ComError{ComError::kFailed}; };
  }
  std::string Log() const {
    std::string text;
    for (const std::string& entry : log) text += (text.empty() ? "" : " ") + entry;
    return text;
  }
  // The only document that a call was given.
  std::wstring Sent(const std::string& call) const {
    const auto found = sent.find(call);
    return found != sent.end() && found->second.size() == 1 ? found->second[0] : L"not sent once";
  }

  static TslCommon::ComponentRegistry& Registry() { return TslCommon::ComponentRegistry::Instance(); }

 private:
  std::wstring Happen(const std::string& call) {
    log.push_back(call);
    if (const auto what = doing.find(call); what != doing.end()) what->second();
    return answers[call];
  }
  std::wstring Happen(const std::string& call, const std::wstring& document) {
    sent[call].push_back(document);
    return Happen(call);
  }

  // Notes that an engine was made and given up, the latter without taking memory.
  class Life {
   public:
    Life(FakeEngines& owner, const std::string& name) : owner_(owner), name_(name), end_("-" + name) {
      owner_.Happen("+" + name_);
      owner_.log.reserve(owner_.log.size() + 100);
    }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() { owner_.log.push_back(std::move(end_)); }
    std::wstring Happen(const char* call) { return owner_.Happen(name_ + "." + call); }
    std::wstring Happen(const char* call, const std::wstring& document) {
      return owner_.Happen(name_ + "." + call, document);
    }

   private:
    FakeEngines& owner_;
    std::string name_;
    std::string end_;
  };

  class Series final : public SeriesEngine {
   public:
    Series(FakeEngines& owner, const std::string& name) : life_(owner, name) {}
    std::wstring GetLastError() override { return life_.Happen("GetLastError"); }
    void SetPrefs(const std::wstring& document) override { life_.Happen("SetPrefs", document); }
    std::wstring AutoSeries(const std::wstring& document) override {
      return life_.Happen("AutoSeries", document);
    }
    std::wstring FindSeries(const std::wstring& document) override {
      return life_.Happen("FindSeries", document);
    }
    std::wstring RecalcSeries(const std::wstring& document) override {
      return life_.Happen("RecalcSeries", document);
    }

   private:
    Life life_;
  };

  class Plot final : public MassPlotEngine {
   public:
    explicit Plot(FakeEngines& owner) : life_(owner, "Plot") {}
    std::wstring GetLastError() override { return life_.Happen("GetLastError"); }
    void AddPeakPlot(const std::wstring& document) override { life_.Happen("AddPeakPlot", document); }
    std::wstring GetSeriesPlot() override { return life_.Happen("GetSeriesPlot"); }
    void AddSeriesPlot(const std::wstring& document) override { life_.Happen("AddSeriesPlot", document); }
    std::wstring GetResultPlot() override { return life_.Happen("GetResultPlot"); }

   private:
    Life life_;
  };
};

// A charge state in an answer.
inline std::wstring StateXml(int charge, std::uint32_t monoPk, const std::vector<std::uint32_t>& peakIds,
                             double monoMass = 998.5, double dev = 0.25) {
  std::wstring xml = L"<ChargeState charge='" + std::to_wstring(charge) + L"' dev='" + std::to_wstring(dev) +
                     L"' monoPk='" + std::to_wstring(monoPk) + L"' monoMass='" + std::to_wstring(monoMass) +
                     L"'>";
  for (const std::uint32_t id : peakIds) xml += L"<Peak id='" + std::to_wstring(id) + L"'/>";
  return xml + L"</ChargeState>";
}

inline std::wstring SeriesXml(double avgMass, const std::wstring& states) {
  return L"<Series avgMass='" + std::to_wstring(avgMass) + L"' stdDev='0.5'>" + states + L"</Series>";
}

inline std::wstring AnswerXml(const std::wstring& series) { return L"<CSDecon>" + series + L"</CSDecon>"; }

}  // namespace tests
