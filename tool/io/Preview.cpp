#include <tool/io/Preview.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/io/CorrelatedNoise.h>
#include <tool/io/CountStep.h>
#include <tool/io/SmoothBumps.h>
#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/peak/PairCorrelation.h>
#include <tslbl/closed/math/peak/TypicalOfKinds.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

// When these show peaks, so strong that no others need be asked, it is known.
constexpr std::size_t kSpectra = 8;
constexpr double kEnoughStrength = 30.0;
// Below this it is rather told by all counts together: bumps of noise on weak peaks make them look narrow.
constexpr double kWeak = 10.0;
constexpr std::size_t kLookedAt = 32;  // whatever they hold
constexpr double kHigher = 1.1;
constexpr std::ptrdiff_t kStretch = 512;  // points
constexpr double kEven = 1.5;
constexpr double kNarrowShare = 0.1;
constexpr double kShortSteps = 0.05;
constexpr std::size_t kSpan = 16;    // steps, so that their rounding does not matter
constexpr double kLikeCounts = 2.0;  // at most, between the variances of points and of counts

using Loader = std::function<LoadedSpectrum()>;

// A source some of whose spectra have been taken out already.
class LookedAhead final : public SpectrumSource {
 public:
  LookedAhead(std::unique_ptr<SpectrumSource> rest, std::deque<Loader> first)
      : rest_(std::move(rest)), first_(std::move(first)) {}

  Loader Next() override {
    if (first_.empty()) return rest_->Next();
    Loader next = std::move(first_.front());
    first_.pop_front();
    return next;
  }
  std::optional<std::uint64_t> Count() const override { return rest_->Count(); }
  std::string Format() const override { return rest_->Format(); }
  IdFormat Ids() const override { return rest_->Ids(); }
  std::optional<double> MzStep() const override { return rest_->MzStep(); }
  std::string Skipped() const override { return rest_->Skipped(); }
  bool SkippedCentroids() const override { return rest_->SkippedCentroids(); }
  Chromatograms PassedOver() const override { return rest_->PassedOver(); }
  std::vector<std::string> Warnings() const override { return rest_->Warnings(); }
  std::vector<std::string> Notes() const override { return rest_->Notes(); }

 private:
  std::unique_ptr<SpectrumSource> rest_;
  std::deque<Loader> first_;
};

// The spacing of an axis, or 0 if more than a twentieth of its steps differ much from the median. Where it
// grows, as that of a time of flight, the narrowest peaks stand where it is shortest.
double EvenStep(const std::vector<double>& x) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < x.size(); ++i) steps.push_back(x[i] - x[i - 1]);
  if (steps.empty()) return 0.0;
  const double median = TslMath::Median(steps);
  const auto differs = [&](double step) { return step < median / kEven || step > median * kEven; };
  const auto uneven = static_cast<std::size_t>(std::ranges::count_if(steps, differs));
  if (20 * uneven > steps.size()) return 0.0;
  std::vector<double> means = {median};
  for (std::size_t i = kSpan; i < x.size(); i += kSpan)
    means.push_back((x[i] - x[i - kSpan]) / static_cast<double>(kSpan));
  return TslMath::Quantile(std::move(means), kShortSteps);
}

// Whether points that stand together can only be of a peak: neighbours differ by as much as counts do.
bool AreIndependentCounts(const std::vector<double>& y) {
  const double step = CountStepOf(y);
  if (!(step > 0.0)) return false;
  double squares = 0.0;
  for (std::size_t i = 1; i < y.size(); ++i) squares += (y[i] - y[i - 1]) * (y[i] - y[i - 1]);
  const double ofCounts = 2.0 * step * std::reduce(y.begin(), y.end());
  return squares > ofCounts / kLikeCounts && squares < ofCounts * kLikeCounts;
}

// The most that the curve rises within a stretch of it; a single point that stands out does not count.
double LargestRise(const std::vector<double>& y) {
  double largest = 0.0;
  for (auto from = y.begin(); y.end() - from > 1;) {
    const auto to = from + std::min<std::ptrdiff_t>(kStretch, y.end() - from);
    double lowest = std::max(from[0], from[1]);
    double highest = std::min(from[0], from[1]);
    for (auto next = from + 1; next != to; ++next) {
      lowest = std::min(lowest, std::max(next[-1], *next));
      highest = std::max(highest, std::min(next[-1], *next));
    }
    largest = std::max(largest, highest - lowest);
    from = to;
  }
  return largest;
}

// What the spectra that could be loaded show. Beyond the first, only those are looked at that rise higher
// than all before.
class Findings {
 public:
  void Add(const LoadedSpectrum& loaded) {
    const TslBL::Spectrum& spectrum = *loaded.spectrum;
    points_.push_back(static_cast<double>(spectrum.yAxis.size()));
    if (IsWorthALook(LargestRise(spectrum.yAxis))) Look(spectrum, loaded.msLevel);
  }

  bool Suffice() const { return seen_.size() >= kSpectra && squares_ >= kEnoughStrength * kEnoughStrength; }
  double Points() const { return std::reduce(points_.begin(), points_.end()); }

  Preview Summary() const {
    Preview preview;
    if (!points_.empty()) preview.points = TslMath::Median(points_);
    if (!seen_.empty()) TellPeaks(preview);
    if (squares_ < kWeak * kWeak) TellWeakPeaks(preview);
    return preview;
  }

 private:
  static bool IsEnough(const std::vector<TslMath::WeightedWidth>& widths) {
    double squares = 0.0;
    for (const TslMath::WeightedWidth& each : widths) squares += each.weight;
    return squares >= kEnoughStrength * kEnoughStrength;
  }

  bool IsWorthALook(double rise) {
    const bool isHigher = rise > kHigher * highest_;
    if (isHigher) highest_ = rise;
    return isHigher || (lookedAt_ < kLookedAt && seen_.size() < kSpectra);
  }

  void Look(const TslBL::Spectrum& spectrum, int msLevel) {
    ++lookedAt_;
    const std::vector<double>& y = spectrum.yAxis;
    const TslMath::PeakWidth width =
        TslMath::MeasurePeakWidth(y.data(), static_cast<std::uint32_t>(y.size()));
    if (width.strength < kWeak) NoteWeakPeaks(spectrum);
    if (!(width.points > 0.0)) return;
    const double weight = width.strength * width.strength;
    seen_.push_back({width.points, weight});
    if (msLevel > 0) seenOfLevel_[msLevel].push_back(seen_.back());
    squares_ += weight;
    pointsWithPeaks_.push_back(points_.back());
    if (IsNoiseCorrelated(y, width.points)) ++correlated_;
    if (AreBumpsSmooth(y)) ++smooth_;
    steps_.push_back(EvenStep(spectrum.xAxis));
  }

  void TellPeaks(Preview& preview) const {
    preview.points = TslMath::Median(pointsWithPeaks_);
    preview.spectra = seen_.size();
    preview.isSettled = Suffice();
    preview.isNoiseCorrelated = 2 * correlated_ > seen_.size();
    preview.areBumpsSmooth = 2 * smooth_ > seen_.size();
    preview.pointsAcross = TslMath::TypicalOfKinds(seen_, kNarrowShare);
    TakeStep(steps_, preview);
    for (const auto& [level, widths] : seenOfLevel_)
      if (IsEnough(widths))
        preview.pointsAcrossOfLevel[level] = TslMath::TypicalOfKinds(widths, kNarrowShare);
  }

  // Where no peak stands out well, many may do so together.
  void TellWeakPeaks(Preview& preview) const {
    const double width = weak_.Width();
    if (!(width > 0.0)) return;
    preview.pointsAcross = width;
    TakeStep(stepsOfWeak_, preview);
  }

  static void TakeStep(const std::vector<double>& steps, Preview& preview) {
    const auto [least, most] = std::ranges::minmax(steps);
    if (least > 0.0 && most <= kEven * least) preview.evenStep = TslMath::Median(steps);
  }

  void NoteWeakPeaks(const TslBL::Spectrum& spectrum) {
    const double step = EvenStep(spectrum.xAxis);
    if (!(step > 0.0) || !AreIndependentCounts(spectrum.yAxis)) return;
    weak_.Add(spectrum.yAxis.data(), static_cast<std::uint32_t>(spectrum.yAxis.size()));
    stepsOfWeak_.push_back(step);
  }

  std::vector<double> points_;  // of each spectrum
  std::vector<double> pointsWithPeaks_;
  std::vector<TslMath::WeightedWidth> seen_;
  std::map<int, std::vector<TslMath::WeightedWidth>> seenOfLevel_;
  std::vector<double> steps_;
  TslMath::PairCorrelation weak_;
  std::vector<double> stepsOfWeak_;
  double squares_ = 0.0;
  double highest_ = 0.0;
  std::size_t lookedAt_ = 0;
  std::size_t correlated_ = 0;
  std::size_t smooth_ = 0;
};

Loader Failing(const std::exception_ptr& failure) {
  return [failure]() -> LoadedSpectrum { std::rethrow_exception(failure); };
}

// A loader may be called once only: what it gave, or threw, is kept for the one who evaluates.
Loader Kept(const Loader& load, Findings& findings) {
  try {
    const auto loaded = std::make_shared<LoadedSpectrum>(load());
    if (!loaded->isPeakList) findings.Add(*loaded);
    return [loaded] { return std::move(*loaded); };
  } catch (...) {
    return Failing(std::current_exception());
  }
}

}  // namespace

Preview LookAhead(std::unique_ptr<SpectrumSource>& source, std::size_t mostPoints) {
  std::deque<Loader> first;
  Findings findings;
  bool isAtEnd = false;
  try {
    while (!findings.Suffice() && findings.Points() < static_cast<double>(mostPoints) &&
           first.size() < mostPoints) {
      ThrowIfInterrupted();
      const Loader next = source->Next();
      isAtEnd = !next;
      if (isAtEnd) break;
      first.push_back(Kept(next, findings));
    }
  } catch (...) {
    first.push_back(Failing(std::current_exception()));
  }
  source = std::make_unique<LookedAhead>(std::move(source), std::move(first));
  Preview preview = findings.Summary();
  preview.isSettled |= isAtEnd;
  return preview;
}

Preview LookThrough(SpectrumSource& source) {
  Findings findings;
  try {
    while (!findings.Suffice()) {
      ThrowIfInterrupted();
      const Loader next = source.Next();
      if (!next) break;
      const LoadedSpectrum loaded = next();
      if (!loaded.isPeakList) findings.Add(loaded);
    }
  } catch (const InputError&) {
    // Who evaluates the source tells it.
    return findings.Summary();
  }
  return findings.Summary();
}

}  // namespace TslTool
