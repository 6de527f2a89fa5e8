#include <tool/io/Preview.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <deque>
#include <exception>
#include <functional>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kSpectra = 8;
constexpr double kEven = 1.5;

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

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The median spacing of an axis, or 0 if more than a twentieth of its steps differ much from it.
double EvenStep(const std::vector<double>& x) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < x.size(); ++i) steps.push_back(x[i] - x[i - 1]);
  if (steps.empty()) return 0.0;
  const double median = Median(steps);
  const auto differs = [&](double step) { return step < median / kEven || step > median * kEven; };
  const auto uneven = static_cast<std::size_t>(std::ranges::count_if(steps, differs));
  return 20 * uneven > steps.size() ? 0.0 : median;
}

// What the spectra that could be loaded show.
class Findings {
 public:
  void Add(const TslBL::Spectrum& spectrum) {
    const std::vector<double>& y = spectrum.yAxis;
    points_.push_back(static_cast<double>(y.size()));
    const double width = TslMath::TypicalPeakWidth(y.data(), static_cast<std::uint32_t>(y.size()));
    if (!(width > 0.0)) return;
    widths_.push_back(width);
    pointsWithPeaks_.push_back(points_.back());
    steps_.push_back(EvenStep(spectrum.xAxis));
  }

  bool Suffice() const { return widths_.size() >= kSpectra; }
  double Points() const { return std::reduce(points_.begin(), points_.end()); }

  Preview Summary() {
    Preview preview;
    if (!points_.empty()) preview.points = Median(points_);
    if (widths_.empty()) return preview;
    preview.points = Median(pointsWithPeaks_);
    preview.spectra = widths_.size();
    preview.pointsAcross = Median(widths_);
    if (std::ranges::find(steps_, 0.0) == steps_.end()) preview.evenStep = Median(steps_);
    return preview;
  }

 private:
  std::vector<double> points_;  // of each spectrum
  std::vector<double> pointsWithPeaks_;
  std::vector<double> widths_;
  std::vector<double> steps_;
};

Loader Failing(const std::exception_ptr& failure) {
  return [failure]() -> LoadedSpectrum { std::rethrow_exception(failure); };
}

// A loader may be called once only: what it gave, or threw, is kept for the one who evaluates.
Loader Kept(const Loader& load, Findings& findings) {
  try {
    const auto loaded = std::make_shared<LoadedSpectrum>(load());
    findings.Add(*loaded->spectrum);
    return [loaded] { return std::move(*loaded); };
  } catch (...) {
    return Failing(std::current_exception());
  }
}

}  // namespace

Preview LookAhead(std::unique_ptr<SpectrumSource>& source, std::size_t mostPoints) {
  std::deque<Loader> first;
  Findings findings;
  try {
    while (!findings.Suffice() && findings.Points() < static_cast<double>(mostPoints) &&
           first.size() < mostPoints) {
      ThrowIfInterrupted();
      const Loader next = source->Next();
      if (!next) break;
      first.push_back(Kept(next, findings));
    }
  } catch (...) {
    first.push_back(Failing(std::current_exception()));
  }
  source = std::make_unique<LookedAhead>(std::move(source), std::move(first));
  return findings.Summary();
}

Preview LookThrough(SpectrumSource& source) {
  Findings findings;
  try {
    while (!findings.Suffice()) {
      ThrowIfInterrupted();
      const Loader next = source.Next();
      if (!next) break;
      findings.Add(*next().spectrum);
    }
  } catch (const InputError&) {
    // Who evaluates the source tells it.
    return findings.Summary();
  }
  return findings.Summary();
}

}  // namespace TslTool
