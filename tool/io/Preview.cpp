#include <tool/io/Preview.h>

#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <deque>
#include <exception>
#include <functional>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kSpectra = 8;

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
  std::optional<double> MzStep() const override { return rest_->MzStep(); }
  std::vector<std::string> Warnings() const override { return rest_->Warnings(); }
  std::vector<std::string> Notes() const override { return rest_->Notes(); }

 private:
  std::unique_ptr<SpectrumSource> rest_;
  std::deque<Loader> first_;
};

// A loader may be called once only: what it gave, or threw, is kept for the one who evaluates.
Loader Kept(const Loader& load, std::vector<double>& widths) {
  try {
    const auto loaded = std::make_shared<LoadedSpectrum>(load());
    const std::vector<double>& y = loaded->spectrum->yAxis;
    widths.push_back(TslMath::TypicalPeakWidth(y.data(), static_cast<std::uint32_t>(y.size())));
    return [loaded] { return std::move(*loaded); };
  } catch (...) {
    return [failure = std::current_exception()]() -> LoadedSpectrum { std::rethrow_exception(failure); };
  }
}

}  // namespace

Preview LookAhead(std::unique_ptr<SpectrumSource>& source) {
  std::deque<Loader> first;
  std::vector<double> widths;
  while (first.size() < kSpectra) {
    Loader next;
    try {
      next = source->Next();
    } catch (...) {
      first.push_back(
          [failure = std::current_exception()]() -> LoadedSpectrum { std::rethrow_exception(failure); });
      break;
    }
    if (!next) break;
    first.push_back(Kept(next, widths));
  }
  source = std::make_unique<LookedAhead>(std::move(source), std::move(first));
  std::erase(widths, 0.0);
  if (widths.empty()) return {};
  const auto middle = widths.begin() + static_cast<std::ptrdiff_t>(widths.size() / 2);
  std::nth_element(widths.begin(), middle, widths.end());
  return {*middle, widths.size()};
}

}  // namespace TslTool
