// This project's chain: from the axis and counts of a spectrum to its table of peaks.

#include <Measure.h>
#include <tslbl/TslBL.h>
#include <map>
#include <memory>

using namespace TslBL;

namespace {

struct Settings {
  std::uint32_t width;    // of Savitzky-Golay of order 2, points
  std::uint32_t segment;  // of baseline and noise, points
  std::uint32_t sn;
};

const std::map<std::string, Settings> kChains = {
    {"savgol 15, segment 250, S/N 5", {15, 250, 5}},
    {"savgol 17, segment 500, S/N 5", {17, 500, 5}},
    {"savgol 17, segment 500, S/N 6", {17, 500, 6}},
    {"savgol 17, segment 500, S/N 10", {17, 500, 10}},
};

std::vector<CurveEval> MakeChain(const Settings& settings) {
  SmoothParams smooth = SmoothParams::DefaultMS();
  smooth.Alg = SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, settings.width}};
  BaselineParams baseline = BaselineParams::DefaultMS();
  baseline.SegSize = settings.segment;
  NoiseParams noise = NoiseParams::DefaultMS();
  noise.SegSize = settings.segment;
  PeakDetectParams peaks = PeakDetectParams::DefaultMS();
  peaks.SN = settings.sn;
  peaks.MaxValley = 50.0;
  return {smooth, baseline, noise, peaks};
}

void KeepToOneThread() {
  AppThreadingParams params;
  params.FindFeature.EnableMultiThreading = false;
  params.DescribePeaks.EnableMultiThreading = false;
  params.SelectPeaks.EnableMultiThreading = false;
  SetMultiThreadingParams(params);
}

class Chain {
 public:
  explicit Chain(const std::string& name) : evals_(MakeChain(kChains.at(name))) { KeepToOneThread(); }

  void Load(const Peers::Values& axis, const Peers::Values& counts) {
    spectrum_ = std::make_unique<Spectrum>();
    spectrum_->xAxis = axis;
    spectrum_->yAxis = counts;
    spectrum_->AddStatus(Curve::STATUS_X);
    spectrum_->AddStatus(Curve::STATUS_Y);
  }

  void Run() {
    Changed changed;
    std::wstring error;
    if (!ExecuteCurveEvals(*spectrum_, evals_, changed, error)) throw std::runtime_error("the chain failed");
    table_ = CreateMZPeakTable(*spectrum_);
  }

  Peers::Values Centres() const {
    Peers::Values centres;
    for (const MZPeak& peak : table_) centres.push_back(peak.Mass);
    return centres;
  }

 private:
  std::vector<CurveEval> evals_;
  std::unique_ptr<Spectrum> spectrum_;
  std::vector<MZPeak> table_;
};

}  // namespace

int main(int count, char** arguments) { return Peers::Main<Chain>(count, arguments); }
