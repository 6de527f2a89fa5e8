#include <tool/chain/ChainOptions.h>

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <tool/chain/SwitchWords.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Numbers.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>
#include <algorithm>
#include <array>
#include <variant>

namespace TslTool {
namespace {

using TslBL::BaselineParams;
using TslBL::CurveEval;
using TslBL::NoiseParams;
using TslBL::PeakDetectParams;
using TslBL::SmoothParams;

// Each of these begins with the preset.
void AddSmooth(std::vector<CurveEval>& chain, const std::string& text, SmoothParams p) {
  SwitchWords words("--smooth", text);
  if (words.Word() == "off") return words.RequireEnd();
  if (words.Word() == "mean") {
    p.Alg = SmoothParams::Mean;
  } else if (words.Word() == "median") {
    p.Alg = SmoothParams::Median;
  } else if (words.Word() == "gaussian") {
    p.Alg = SmoothParams::Gaussian;
  } else if (words.Word() == "savgol") {
    p.Alg = SmoothParams::SavitzkyGolay;
  } else {
    words.Unknown("auto, mean, median, gaussian, savgol, off");
  }
  words.Count(p.Steps.front().Size, 2);
  if (p.Alg == SmoothParams::SavitzkyGolay) {
    words.Count(p.Order, 0);
    // The window grows to an odd width; a polynomial with as many terms passes through every point.
    if (p.Order >= (p.Steps.front().Size | 1U) - 1U)
      words.Refuse("it changes nothing, the width must be larger than the order by 2");
  }
  words.RequireEnd();
  chain.emplace_back(p);
}

double Constant(const SwitchWords& words) {
  try {
    return ParseReal("--baseline", words.Word());
  } catch (const UsageError&) {
    words.Unknown("linear, adaptive, valley, or a number");
  }
}

void AddBaseline(std::vector<CurveEval>& chain, const std::string& text, BaselineParams p) {
  SwitchWords words("--baseline", text);
  if (words.Word() == "linear") {
    p.Alg = BaselineParams::LinearFitSD;
    words.Count(p.SegSize);
    words.Count(p.Points);
    words.Count(p.Width);
  } else if (words.Word() == "adaptive") {
    p.Alg = BaselineParams::Adaptive;
    words.Count(p.SegSize);
    words.Count(p.Window);
  } else if (words.Word() == "valley") {
    p.Alg = BaselineParams::VFBaseline;
    words.Count(p.SegSize);
  } else {
    p.Auto = false;
    p.ManVal = Constant(words);
  }
  words.RequireEnd();
  chain.emplace_back(p);
}

// The range of the axis after the word, for the two ways that measure the noise on one.
std::optional<RealRange> StretchOf(SwitchWords& words, const std::string& unit) {
  if (words.Word() != "peak-to-peak" && words.Word() != "6sd") return std::nullopt;
  if (!words.HasMore()) words.Refuse("it needs a range of " + unit + ", as in " + words.Word() + ":100-120");
  return ParseRealRange("--noise", words.Next());
}

void AddNoise(std::vector<CurveEval>& chain, const std::string& text, NoiseParams p,
              const std::string& unit) {
  SwitchWords words("--noise", text);
  if (words.Word() == "linear") {
    p.AlgAuto = NoiseParams::AutoAlgs::LinearFitSD;
    words.Count(p.SegSize);
    words.Count(p.Points);
    words.Count(p.Width);
  } else if (words.Word() == "valley") {
    p.AlgAuto = NoiseParams::AutoAlgs::VFNoise;
    words.Count(p.SegSize);
  } else if (words.Word() == "dispersion") {
    p.AlgAuto = NoiseParams::AutoAlgs::Dispersion;
    words.Count(p.SegSize);
  } else if (words.Word() == "median") {
    p.AlgAuto = NoiseParams::AutoAlgs::Median;
    p.Median = 5;
    words.Count(p.SegSize);
    words.Count(p.Median);
  } else if (const auto stretch = StretchOf(words, unit)) {
    p.Auto = false;
    p.AlgMan = words.Word() == "6sd" ? NoiseParams::ManAlgs::SixTimesSD : NoiseParams::ManAlgs::PeakToPeak;
    p.Start = stretch->from;
    p.End = stretch->to;
  } else {
    words.Unknown("linear, valley, dispersion, median, peak-to-peak, 6sd");
  }
  words.RequireEnd();
  chain.emplace_back(p);
}

// Whether a way of baseline or noise lacks the length of its segments.
bool TakesSegment(const std::string& how) {
  constexpr std::array kSegmented = {"linear", "adaptive", "valley", "dispersion", "median"};
  return std::ranges::find(kSegmented, how) != kSegmented.end();
}

// Adds the length of the segments to a way that lacks it.
void AddSegment(std::string& how, const ChainDefaults& defaults) {
  if (!TakesSegment(how)) return;
  const std::uint32_t adaptive = defaults.adaptiveSegment.value_or(defaults.segment);
  how += fmt::format(":{}", how == "adaptive" ? adaptive : defaults.segment);
}

void RequirePositive(const std::string& option, std::optional<double> value) {
  if (value && *value < 0.0) throw UsageError(option + ": it cannot be below 0");
}

void RequirePercent(const std::string& option, std::optional<double> value) {
  if (value && (*value < 0.0 || *value > 100.0)) throw UsageError(option + ": a percentage is from 0 to 100");
}

void SetPosition(PeakDetectParams& p, const std::string& text) {
  SwitchWords words("--position", text);
  if (words.Word() == "top") {
    p.RetentionType = PeakDetectParams::PeakTop;
  } else if (words.Word() == "centroid") {
    p.RetentionType = PeakDetectParams::CentroidTopPercent;
    if (words.HasMore()) p.Retention = ParseReal("--position", words.Next());
    RequirePercent("--position", p.Retention);
  } else {
    words.Unknown("top, centroid");
  }
  words.RequireEnd();
}

template <class T>
void SetLimit(const std::optional<T>& given, bool& inUse, T& value) {
  if (!given) return;
  inUse = true;
  value = *given;
}

void DeclareOne(Options& options, const std::string& names, bool& flag, const std::string& help) {
  options.Flag(names, flag, help);
}
template <class T>
void DeclareOne(Options& options, const std::string& names, T& value, const std::string& help) {
  options.Value(names, value, help);
}

bool EndsWithChargeStates(const std::vector<CurveEval>& chain) {
  return !chain.empty() && chain.back().Type() == TslBL::EvalType::CSDecon;
}

void RefuseChargeStates(const std::string& file, const std::vector<CurveEval>& chain,
                        const std::string& reason) {
  const auto found = std::ranges::find(chain, TslBL::EvalType::CSDecon, &CurveEval::Type);
  if (found != chain.end())
    throw InputError(file, fmt::format("command {}", found - chain.begin() + 1),
                     "Charge State Deconvolution " + reason);
}

}  // namespace

// A switch of the usual chain, and the member that takes what the user gives.
struct ChainOptions::Switch {
  using SwitchMember =
      std::variant<bool ChainOptions::*, std::string ChainOptions::*, std::optional<double> ChainOptions::*,
                   std::optional<std::uint32_t> ChainOptions::*>;
  std::string names;
  SwitchMember member;
  std::string help;

  std::string Name() const { return names.substr(0, names.find(' ')); }
};

std::vector<ChainOptions::Switch> ChainOptions::Switches() const {
  using Own = ChainOptions;
  const std::string& unit = presets_.unit;
  std::vector<Switch> switches = {
      {"--aerosol", &Own::aerosol_, "Remove isolated spikes first"},
      {"--smooth HOW", &Own::smooth_,
       "mean, median or gaussian[:WIDTH], savgol[:WIDTH[:ORDER]], or off; width in points [auto: " +
           presets_.smoothHelp + "]"},
      {"--baseline HOW", &Own::baseline_,
       "linear[:SEGMENT[:POINTS[:WIDTH]]], adaptive[:SEGMENT[:WINDOW]], valley[:SEGMENT], or a "
       "constant [" +
           presets_.baselineHelp + "]"},
      {"--subtract-baseline", &Own::subtractBaseline_, "Subtract the baseline from the amplitudes"},
      {"--noise HOW", &Own::noise_,
       "linear[:SEGMENT[:POINTS[:WIDTH]]], valley[:SEGMENT], dispersion[:SEGMENT], "
       "median[:SEGMENT[:SEGMENTS]], "
       "or of a peak-free range of " +
           unit + ": peak-to-peak:A-B, 6sd:A-B [" + presets_.noiseHelp + "]"},
      {"--threshold X", &Own::threshold_, "Minimum amplitude"},
      {"--sn N", &Own::sn_, "Minimum signal-to-noise ratio, a whole number [" + presets_.snHelp + "]"},
      {"--min-rel-ampl PERCENT", &Own::minRelAmpl_, "Minimum amplitude, percent of the tallest peak"},
      {"--min-area X", &Own::minArea_, "Minimum area"},
      {"--min-rel-area PERCENT", &Own::minRelArea_, "Minimum area, percent of the largest"},
      {"--min-width X", &Own::minWidth_,
       "Minimum full width at half maximum, " + unit + " [" + presets_.minWidthHelp + "]"},
      {"--max-width X", &Own::maxWidth_, "Maximum full width at half maximum, " + unit},
      {"--max-peaks N", &Own::maxPeaks_, "Keep only this many of the tallest candidates"},
      {"--valley PERCENT", &Own::valley_,
       fmt::format("A valley below this percentage of a peak's height ends it [{:g}]", presets_.valley)},
      {"--position HOW", &Own::position_,
       "Position of a peak: top, or centroid[:PERCENT] over its top percent [" + presets_.position + "]"},
      {"--range A-B", &Own::range_, "Search only from A to B, " + unit},
      {"--sorted", &Own::sorted_, "Find candidates tallest first instead of from left to right"},
  };
  if (!presets_.hasSearch)
    std::erase_if(switches, [](const Switch& each) { return each.Name() == "--range"; });
  return switches;
}

ChainOptions::ChainOptions(ChainPresets presets)
    : presets_(std::move(presets)),
      baseline_(presets_.baselineHow),
      noise_(presets_.noiseHow),
      valley_(presets_.valley),
      position_(presets_.position) {}

void ChainOptions::Declare(Options& options) {
  options.Value("--chain FILE", file_,
                "Run the chain of this XML file instead of the default one (" + presets_.chainHelp + ")");
  for (const Switch& each : Switches())
    std::visit([&](auto member) { DeclareOne(options, each.names, this->*member, each.help); }, each.member);
}

std::vector<CurveEval> ChainOptions::Chain(const Options& options, const ChainDefaults& defaults) const {
  if (!options.Given("--chain")) return With(defaults).FromSwitches();
  for (const Switch& each : Switches())
    if (options.Given(each.Name())) throw UsageError(each.Name() + " and --chain exclude each other");
  std::vector<CurveEval> chain = LoadChain(file_);
  if (takesChargeStates_ && EndsWithChargeStates(chain)) chain.pop_back();
  // It needs a spectrum of its own kind, and its result has a table of its own.
  RefuseChargeStates(file_, chain,
                     takesChargeStates_ ? "must be the last command" : "is done by tslbl decon --chain");
  return chain;
}

std::optional<TslBL::ChargeStateParams> ChainOptions::ChargeStates() const {
  if (file_.empty()) return std::nullopt;
  const std::vector<CurveEval> chain = LoadChain(file_);
  if (!EndsWithChargeStates(chain)) return std::nullopt;
  return ChargeStatesOf(chain.back());
}

std::optional<RealRange> ChainOptions::NoiseStretch() const {
  if (!file_.empty()) return std::nullopt;
  SwitchWords words("--noise", noise_);
  return StretchOf(words, presets_.unit);
}

std::optional<RealRange> ChainOptions::SearchStretch() const {
  if (range_.empty()) return std::nullopt;
  return ParseRealRange("--range", range_);
}

ChainOptions ChainOptions::With(const ChainDefaults& defaults) const {
  ChainOptions all = *this;
  const bool isAutomatic = smooth_ == "auto";
  if (isAutomatic) all.smooth_ = defaults.smooth;
  if (baseline_ == "auto") all.baseline_ = defaults.baseline;
  if (noise_ == "auto") all.noise_ = defaults.noise;
  for (std::string* how : {&all.baseline_, &all.noise_}) AddSegment(*how, defaults);
  if (!all.sn_) all.sn_ = defaults.sn;
  const bool tooWide = maxWidth_ && defaults.minWidth && *maxWidth_ < *defaults.minWidth;
  // Another smoothing leaves peaks of other widths.
  if (isAutomatic && !all.minWidth_ && !tooWide) all.minWidth_ = defaults.minWidth;
  return all;
}

bool ChainOptions::NeedsDefaults() const { return !Derived(DefaultsFor(Preview(), std::nullopt)).empty(); }

bool ChainOptions::ToleratesOffset() const {
  const bool hasLevel = !file_.empty() || threshold_ || minRelAmpl_ || subtractBaseline_ ||
                        (baseline_ != "auto" && !TakesSegment(baseline_.substr(0, baseline_.find(':'))));
  return !hasLevel && smooth_ != "off";
}

std::string ChainOptions::Derived(const ChainDefaults& defaults) const {
  if (!file_.empty()) return "";
  const ChainOptions all = With(defaults);
  std::string text;
  const auto add = [&](const char* name, const auto& before, const auto& now, const auto& shown) {
    if (before != now) text += fmt::format("{} {} ", name, shown);
  };
  add("--smooth", smooth_, all.smooth_, all.smooth_);
  add("--baseline", baseline_, all.baseline_, all.baseline_);
  add("--noise", noise_, all.noise_, all.noise_);
  add("--sn", sn_, all.sn_, all.sn_.value_or(0));
  add("--min-width", minWidth_, all.minWidth_, all.minWidth_.value_or(0.0));
  return text.empty() ? "" : fmt::format("{}({})", text, defaults.reason);
}

std::vector<CurveEval> ChainOptions::FromSwitches() const {
  std::vector<CurveEval> chain;
  if (aerosol_) chain.emplace_back(CurveEval::AerosolFilter());
  AddSmooth(chain, smooth_, presets_.smooth);
  AddBaseline(chain, baseline_, presets_.baseline);
  // The noise comes first: a subtraction cuts the lower half of it off.
  AddNoise(chain, noise_, presets_.noise, presets_.unit);
  if (subtractBaseline_) chain.emplace_back(CurveEval::BaselineSubtract());
  if (threshold_) {
    TslBL::ThresholdParams threshold;
    threshold.Value = *threshold_;
    chain.emplace_back(threshold);
  }
  chain.emplace_back(PeakSearch());
  return chain;
}

PeakDetectParams ChainOptions::PeakSearch() const {
  RequirePercent("--min-rel-ampl", minRelAmpl_);
  RequirePercent("--min-rel-area", minRelArea_);
  RequirePercent("--valley", valley_);
  RequirePositive("--min-area", minArea_);
  RequirePositive("--min-width", minWidth_);
  RequirePositive("--max-width", maxWidth_);
  if (minWidth_ && maxWidth_ && *maxWidth_ < *minWidth_)
    throw UsageError("--max-width: it is below --min-width");
  if (maxPeaks_ == 0U) throw UsageError("--max-peaks: there must be at least one");
  PeakDetectParams p = presets_.peaks;
  p.ThresholdInUse = threshold_.has_value();
  SetLimit(sn_, p.SNInUse, p.SN);
  SetLimit(minRelAmpl_, p.RelAmplInUse, p.RelAmpl);
  SetLimit(minArea_, p.AbsAreaInUse, p.AbsArea);
  SetLimit(minRelArea_, p.RelAreaInUse, p.RelArea);
  SetLimit(minWidth_, p.FWHMGTInUse, p.FWHMGT);
  SetLimit(maxWidth_, p.FWHMLTInUse, p.FWHMLT);
  SetLimit(maxPeaks_, p.PeakCntInUse, p.PeakCnt);
  if (valley_) p.MaxValley = *valley_;
  SetPosition(p, position_);
  if (const auto range = SearchStretch()) {
    p.FullSearch = false;
    p.SearchStart = range->from;
    p.SearchEnd = range->to;
  }
  if (sorted_) p.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  return p;
}

}  // namespace TslTool
