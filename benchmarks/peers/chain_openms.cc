// Chains of OpenMS: smoothing, morphological baseline, and its peak picker for profiles with its own estimate
// of the noise. Bringing the spectrum into OpenMS's form is not part of the time.

#include <Measure.h>
#include <OpenMS/FILTERING/BASELINE/MorphologicalFilter.h>
#include <OpenMS/FILTERING/SMOOTHING/GaussFilter.h>
#include <OpenMS/FILTERING/SMOOTHING/SavitzkyGolayFilter.h>
#include <OpenMS/KERNEL/MSSpectrum.h>
#include <OpenMS/TRANSFORMATIONS/RAW2PEAK/PeakPickerHiRes.h>
#include <map>

using namespace OpenMS;

namespace {

struct Settings {
  bool gaussian;  // of one line width, else Savitzky-Golay (11, 2)
  double sn;
  double window;  // of the estimate of the noise, m/z
  bool ceiling;   // end the histogram of the estimate at 200 counts, with 200 bins
};

const std::map<std::string, Settings> kChains = {
    {"savgol, top hat, S/N 3", {false, 3.0, 200.0, false}},
    {"gaussian, top hat, S/N 3", {true, 3.0, 200.0, false}},
    {"tuned: noise to 200 counts, S/N 5", {false, 5.0, 100.0, true}},
    {"tuned: noise to 200 counts, S/N 4", {false, 4.0, 100.0, true}},
    {"tuned: noise to 200 counts, S/N 6", {false, 6.0, 100.0, true}},
};

class Chain {
 public:
  explicit Chain(const std::string& name) : settings_(kChains.at(name)) {
    Set(savgol_, {{"frame_length", 11}, {"polynomial_order", 2}});
    Set(gaussian_, {{"gaussian_width", 0.6}});
    Set(topHat_, {{"struc_elem_length", 12.5}, {"struc_elem_unit", "Thomson"}, {"method", "tophat"}});
    Set(picker_, {{"signal_to_noise", settings_.sn},
                  {"SignalToNoise:win_len", settings_.window},
                  {"SignalToNoise:write_log_messages", "false"}});
    if (settings_.ceiling)
      Set(picker_, {{"SignalToNoise:auto_mode", -1},
                    {"SignalToNoise:max_intensity", 200},
                    {"SignalToNoise:bin_count", 200}});
  }

  void Load(const Peers::Values& axis, const Peers::Values& counts) {
    spectrum_ = MSSpectrum();
    picked_ = MSSpectrum();
    spectrum_.setType(SpectrumSettings::PROFILE);
    spectrum_.setMSLevel(1);
    for (std::size_t i = 0; i < axis.size(); ++i)
      spectrum_.push_back(Peak1D(axis[i], static_cast<Peak1D::IntensityType>(counts[i])));
  }

  void Run() {
    if (settings_.gaussian) {
      gaussian_.filter(spectrum_);
    } else {
      savgol_.filter(spectrum_);
    }
    topHat_.filter(spectrum_);
    picker_.pick(spectrum_, picked_);
  }

  Peers::Values Centres() const {
    Peers::Values centres;
    for (const Peak1D& peak : picked_) centres.push_back(peak.getMZ());
    return centres;
  }

 private:
  static void Set(DefaultParamHandler& part, const std::map<std::string, DataValue>& values) {
    Param all = part.getParameters();
    for (const auto& [name, value] : values) all.setValue(name, value);
    part.setParameters(all);
  }

  Settings settings_;
  SavitzkyGolayFilter savgol_;
  GaussFilter gaussian_;
  MorphologicalFilter topHat_;
  PeakPickerHiRes picker_;
  MSSpectrum spectrum_;
  MSSpectrum picked_;
};

}  // namespace

int main(int count, char** arguments) { return Peers::Main<Chain>(count, arguments); }
