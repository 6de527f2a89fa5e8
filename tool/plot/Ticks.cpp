#include <tool/plot/Ticks.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

// What rounding may add to a quotient or a logarithm that is a whole number.
constexpr double kSlack = 1e-9;

double StepOf(const Range& range, int parts) {
  const double least = (range.high - range.low) / parts;
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (least <= factor * power * (1.0 + kSlack)) return factor * power;
  return 10.0 * power;
}

int Exponent(double value) { return static_cast<int>(std::floor(std::log10(value) + kSlack)); }

// "2.5e+07" as people write it.
std::string WithShortExponent(std::string text) {
  const std::size_t e = text.find('e');
  if (e == std::string::npos) return text;
  const bool isNegative = text[e + 1] == '-';
  const std::string digits = text.substr(std::min(text.find_first_not_of('0', e + 2), text.size() - 1));
  return text.substr(0, e + 1) + (isNegative ? "-" : "") + digits;
}

class TickTexts {
 public:
  TickTexts(const Range& range, double step)
      : step_(Exponent(step)),
        powers_(std::max(std::abs(range.low), std::abs(range.high)) >= 1e7 || step_ < -5) {}

  std::string Of(double value) const {
    if (value == 0.0 && powers_) return "0";
    if (!powers_) return fmt::format("{:.{}f}", value + 0.0, std::max(0, -step_));
    const int digits = std::clamp(Exponent(std::abs(value)) - step_ + 1, 1, 17);
    return WithShortExponent(fmt::format("{:.{}g}", value, digits));
  }

 private:
  int step_;  // the power of ten in it
  bool powers_;
};

}  // namespace

std::vector<Tick> Ticks(const Range& range, int parts) {
  const double step = StepOf(range, parts);
  const double first = std::ceil(range.low / step - kSlack);
  const double last = std::floor(range.high / step + kSlack);
  const TickTexts texts(range, step);
  std::vector<Tick> ticks;
  for (int i = 0; i <= parts && first + i <= last; ++i) {
    const double value = (first + i) * step;
    ticks.push_back({value, texts.Of(value)});
  }
  return ticks;
}

}  // namespace TslTool
