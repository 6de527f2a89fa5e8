#include <tool/commands/peaks/EvaluationRemarks.h>

#include <fmt/format.h>

#include <tool/chain/FlatTop.h>
#include <tool/commands/peaks/ClippedNoise.h>
#include <tool/commands/peaks/LostHeight.h>
#include <tool/commands/peaks/NoiseOfPeaks.h>
#include <tool/commands/peaks/Spikes.h>
#include <tool/commands/peaks/StillBackground.h>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace TslTool {
namespace {

// Of the points; fewer stand in a group of lines that are close, as isotopes are.
constexpr std::size_t kCrowdedOf = 10;
// Below it QSignalToNoise knows no ratio.
constexpr double kLeastNoise = 1e-8;

bool LosesAmplitudes(const LoadedSpectrum& loaded) {
  return loaded.spectrum->CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) &&
         std::ranges::any_of(loaded.measured,
                             [&](double amplitude) { return amplitude + loaded.lift < 0.0; });
}

bool HasNoiselessPeak(const TslBL::Spectrum& spectrum) {
  return std::ranges::any_of(spectrum.peaks,
                             [](const TslBL::PeakInfo& peak) { return peak.noiseAmpl < kLeastNoise; });
}

bool HasNoiseWithoutNumber(const TslBL::Spectrum& spectrum) {
  return std::ranges::any_of(spectrum.peaks,
                             [](const TslBL::PeakInfo& peak) { return !std::isfinite(peak.noiseAmpl); });
}

// Of a handful of points, which any usual window exceeds, nobody expects a smooth curve.
constexpr std::size_t kLeastPoints = 25;

const std::vector<TslBL::SmoothStep>& WindowsOf(const TslBL::Spectrum& spectrum) {
  static const std::vector<TslBL::SmoothStep> none;
  return spectrum.CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) ? spectrum.smoothParams.Steps : none;
}

bool IsShorterThanItsWindow(const TslBL::Spectrum& spectrum) {
  const std::size_t points = spectrum.xAxis.size();
  return points >= kLeastPoints &&
         std::ranges::any_of(WindowsOf(spectrum),
                             [&](const TslBL::SmoothStep& step) { return step.Size > points; });
}

// 0 if there is none, or the smoothing takes it as it is.
std::uint32_t EvenWidth(const TslBL::Spectrum& spectrum) {
  using TslBL::SmoothParams;
  const bool mustBeOdd = spectrum.smoothParams.Alg == SmoothParams::SavitzkyGolay ||
                         spectrum.smoothParams.Alg == SmoothParams::Median;
  const auto& windows = WindowsOf(spectrum);
  const auto even =
      std::ranges::find_if(windows, [](const TslBL::SmoothStep& step) { return step.Size % 2 == 0; });
  return mustBeOdd && even != windows.end() ? even->Size : 0;
}

double WidthOf(const TslBL::PeakInfo& peak) { return peak.halfHeightRightIdx - peak.halfHeightLeftIdx; }

constexpr double kTooWide = 10.0;  // times the others

// The widest peak, if it is too wide to be one of them.
const TslBL::PeakInfo* HumpOf(const TslBL::Spectrum& spectrum) {
  if (spectrum.peaks.empty()) return nullptr;
  std::vector<double> widths;
  for (const TslBL::PeakInfo& peak : spectrum.peaks) widths.push_back(WidthOf(peak));
  const auto middle = widths.begin() + (std::ssize(widths) - 1) / 2;
  std::nth_element(widths.begin(), middle, widths.end());
  const auto widest = std::ranges::max_element(spectrum.peaks, {}, WidthOf);
  return WidthOf(*widest) > kTooWide * *middle ? &*widest : nullptr;
}

// In less than a handful of points nobody looks for a peak.
constexpr std::size_t kHandful = 5;

bool IsTooShortForPeaks(const TslBL::Spectrum& spectrum) {
  const std::size_t points = spectrum.xAxis.size();
  return spectrum.peaks.empty() && kHandful <= points && points < kLeastPoints;
}

// Of the points; beside a wider peak the background is too short to tell its level.
constexpr double kWidestPart = 0.2;

const TslBL::PeakInfo* PeakWithoutBackground(const TslBL::Spectrum& spectrum) {
  const auto widest = std::ranges::max_element(spectrum.peaks, {}, WidthOf);
  if (widest == spectrum.peaks.end()) return nullptr;
  return WidthOf(*widest) > kWidestPart * static_cast<double>(spectrum.xAxis.size()) ? &*widest : nullptr;
}

std::string Place(double mz) { return fmt::format("m/z {:.2f}", mz); }

std::string Counted(std::uint64_t count, const std::string& what) {
  return fmt::format("{} {} {}", count, count == 1 ? "spectrum" : "spectra", what);
}

}  // namespace

void Troubled::Add(std::uint32_t scan, const std::string& where) {
  const std::lock_guard lock(mutex_);
  if (count_++ > 0 && scan >= first_) return;
  first_ = scan;
  where_ = where;
}

std::string Troubled::Text(const std::string& trouble, const std::string& wayOut) const {
  if (count_ == 0) return "";
  const std::string place = where_.empty() ? "" : ", " + where_;
  return fmt::format("{} (first at scan {}{}){}", Counted(count_, trouble), first_, place, wayOut);
}

void EvaluationRemarks::Look(const LoadedSpectrum& loaded, const Findings& findings) {
  leftOut_ += findings.leftOut;
  spikes_ += findings.spikes;
  if (kCrowdedOf * findings.lowered > loaded.measured.size()) ++crowded_;
  if (findings.shortWindow) cutOff_.Add(loaded.scan, Place(*findings.shortWindow));
  if (LosesAmplitudes(loaded)) ++cut_;
  if (HasNoiselessPeak(*loaded.spectrum)) ++noiseless_;
  if (HasNoiseWithoutNumber(*loaded.spectrum)) ++huge_;
  if (IsShorterThanItsWindow(*loaded.spectrum)) ++short_;
  if (const std::uint32_t width = EvenWidth(*loaded.spectrum)) evenWidth_ = width;
  LookAtPeaks(loaded);
}

void EvaluationRemarks::LookAtPeaks(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  if (HasFlatTop(loaded.measured)) flat_.Add(loaded.scan);
  if (const auto lost = MostLostHeight(loaded))
    reshaped_.Add(loaded.scan, fmt::format("{}, {:.4g} high before and {:.4g} behind it", Place(lost->mz),
                                           lost->before, lost->behind));
  if (IsBackgroundStill(loaded)) still_.Add(loaded.scan);
  if (spectrum.baselineParams.Auto && loaded.countAmpl == 0.0 && HasClippedNoise(loaded.measured))
    clipped_.Add(loaded.scan);
  if (const TslBL::PeakInfo* hump = HumpOf(spectrum))
    wide_.Add(loaded.scan, Place(spectrum.xAxis[hump->apexIdx]));
  if (const auto spike = SpikeAmongPeaks(loaded)) spiky_.Add(loaded.scan, Place(*spike));
  if (IsNoiseOfPeaks(loaded)) loud_.Add(loaded.scan);
  if (const TslBL::PeakInfo* peak = PeakWithoutBackground(spectrum))
    narrow_.Add(loaded.scan, Place(spectrum.xAxis[peak->apexIdx]));
  if (IsTooShortForPeaks(spectrum)) few_.Add(loaded.scan);
}

std::vector<std::string> EvaluationRemarks::Notes() const {
  std::vector<std::string> notes;
  if (leftOut_ > 0)
    notes.push_back(fmt::format(
        "{} peak{} left out that rise{} no higher than noise does there; --min-rise 0 keeps {}",
        leftOut_.load(), leftOut_ == 1 ? "" : "s", leftOut_ == 1 ? "s" : "", leftOut_ == 1 ? "it" : "them"));
  if (spikes_ > 0)
    notes.push_back(fmt::format("{} spike{} of a single point left out; --min-rise 0 keeps {}",
                                spikes_.load(), spikes_ == 1 ? "" : "s", spikes_ == 1 ? "it" : "them"));
  if (crowded_ > 0)
    notes.push_back(Counted(crowded_,
                            "with lines so close that the noise was taken from the counts between them; "
                            "--noise-limit 0 leaves it as --noise finds it"));
  return notes;
}

std::vector<std::string> EvaluationRemarks::Texts() const {
  std::vector<std::string> texts;
  if (cut_ > 0)
    texts.push_back(
        Counted(cut_, "with amplitudes below 0, which smoothing takes for 0; --smooth off keeps them"));
  if (noiseless_ > 0)
    texts.push_back(
        Counted(noiseless_,
                "with peaks where the noise is below 1e-8, so that --sn lets them all pass; --threshold "
                "or --min-area keeps the larger ones, --scale 1e12 or the like multiplies all where they are "
                "so small"));
  if (huge_ > 0)
    texts.push_back(
        Counted(huge_,
                "with peaks whose noise is no number, as of amplitudes above 1e150; --scale 1e-200 or the "
                "like divides them"));
  if (short_ > 0)
    texts.push_back(
        Counted(short_, "shorter than the window of the smoothing, which is cut to their length"));
  if (const std::uint32_t width = evenWidth_)
    texts.push_back(
        fmt::format("a window of {} points is smoothed with {}, the next odd number", width, width + 1));
  texts.push_back(flat_.Text("with a flat top of 4 points or more, as of a detector at its end",
                             "; heights and areas are too low there"));
  texts.push_back(reshaped_.Text("with peaks that smoothing makes lower by a fifth or higher by a twentieth",
                                 "; another window, or --smooth off, keeps them"));
  texts.push_back(
      still_.Text("in which the background is level, so that any point above it passes for a peak",
                  "; --threshold or --min-area keeps the larger ones"));
  texts.push_back(clipped_.Text("whose noise was cut off at 0, which makes areas some percent too small",
                                "; --baseline 0 suits them, if there is no other background"));
  texts.push_back(wide_.Text("with peaks ten times as wide as the others, which may be background",
                             "; --max-width leaves them out"));
  texts.push_back(spiky_.Text("with peaks of a single point among wider ones, as spikes are",
                              "; --smooth median:5, or --aerosol, takes spikes off"));
  texts.push_back(cutOff_.Text("with peaks in windows of points that are too short for them or the smoothing",
                               "; places, widths and areas are unsure"));
  texts.push_back(loud_.Text("with noise far larger than neighbouring points scatter",
                             ", as where peaks leave no background; weak peaks may be missed"));
  texts.push_back(narrow_.Text("with a peak wider than a fifth of its points, which leaves little background",
                               "; heights and areas may be too low"));
  texts.push_back(few_.Text(fmt::format("without a peak and shorter than {} points", kLeastPoints),
                            ", which may be too few to tell a peak from its background"));
  std::erase(texts, "");
  return texts;
}

}  // namespace TslTool
