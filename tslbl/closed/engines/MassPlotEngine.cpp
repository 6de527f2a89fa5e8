#include <tslbl/closed/engines/MassPlotEngine.h>

#include <tslbl/closed/engines/EngineDocument.h>
#include <tslbl/closed/engines/FailureText.h>

#include <memory>

namespace TslMath {
namespace {

class OwnMassPlotEngine final : public MassPlotEngine {
 public:
  std::wstring GetLastError() override { return failure_.Text(); }

  void AddPeakPlot(const std::wstring& document) override {
    failure_.Keep([&] { peaks_.push_back(ReadProfile(document)); });
  }

  std::wstring GetSeriesPlot() override {
    return failure_.Keep([&] {
      std::vector<ChargedProfile> profiles;
      for (const ProfileDocument& peak : peaks_)
        profiles.push_back({peak.x, peak.y, peak.carrierMass, peak.charge});
      const MassCurve sum = SumOfPeaks(profiles);
      peaks_.clear();
      return WriteMassCurve(sum);
    });
  }

  void AddSeriesPlot(const std::wstring& document) override {
    failure_.Keep([&] { series_.push_back(ReadMassCurve(document)); });
  }

  std::wstring GetResultPlot() override {
    return failure_.Keep([&] { return WriteMassCurve(SumOfCurves(series_)); });
  }

 private:
  std::vector<ProfileDocument> peaks_;
  std::vector<MassCurve> series_;
  FailureText failure_;
};

[[maybe_unused]] const bool kIsRegistered = [] {
  RegisterOwnMassPlotEngine();
  return true;
}();

}  // namespace

void RegisterOwnMassPlotEngine() {
  TslCommon::ComponentRegistry::Instance().Register(MassPlotEngine::kClassId,
                                                    [] { return std::make_unique<OwnMassPlotEngine>(); });
}

}  // namespace TslMath
