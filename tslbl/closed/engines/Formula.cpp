#include <tslbl/closed/engines/Formula.h>

#include <tslbl/closed/engines/Elements.h>

#include <algorithm>
#include <cmath>

namespace TslMath {

namespace {

constexpr std::size_t kMostDigits = 9;

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::size_t IndexOf(std::string_view symbol) { return static_cast<std::size_t>(FindElement(symbol)); }

class FormulaReader {
 public:
  explicit FormulaReader(std::string_view text) : text_(text) {}

  Composition Read() {
    for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) ReadTerm();
    const auto& counts = composition_.counts;
    if (std::all_of(counts.begin(), counts.end(), [](auto count) { return count == 0; }))
      Fail(0, "no element");
    return composition_;
  }

 private:
  [[noreturn]] void Fail(std::size_t at, const std::string& reason) const {
    throw FormulaError(text_, at, reason);
  }

  // Part of a character outside ASCII is no text, so it is not shown.
  [[noreturn]] void FailAtForeign() const {
    const char c = text_[at_];
    const bool isAscii = c > 0x20 && c < 0x7f;
    Fail(at_, isAscii ? std::string("no element symbol begins with \"") + c + "\""
                      : "not a plain ASCII character");
  }

  void SkipBlanks() {
    while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
  }

  void ReadTerm() {
    const std::size_t element = ReadSymbol();
    composition_.counts[element] += ReadCount();
  }

  std::size_t ReadSymbol() {
    const std::size_t begin = at_;
    if (!IsUpper(text_[at_])) FailAtForeign();
    ++at_;
    while (at_ < text_.size() && IsLower(text_[at_])) ++at_;
    const std::string_view symbol = text_.substr(begin, at_ - begin);
    const std::int32_t element = FindElement(symbol);
    if (element < 0) Fail(begin, "unknown element \"" + std::string(symbol) + "\"");
    return static_cast<std::size_t>(element);
  }

  std::int64_t ReadCount() {
    const std::size_t begin = at_;
    std::int64_t count = 0;
    for (; at_ < text_.size() && IsDigit(text_[at_]); ++at_) {
      if (at_ - begin == kMostDigits) Fail(begin, "a count of more than 9 digits");
      count = 10 * count + (text_[at_] - '0');
    }
    return at_ == begin ? 1 : count;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  Composition composition_;
};

template <class MassOf>
double SumOver(const Composition& composition, MassOf massOf) {
  double sum = 0;
  for (std::size_t i = 0; i < composition.counts.size(); ++i) {
    sum += static_cast<double>(composition.counts[i]) * massOf(Elements()[i]);
  }
  return sum;
}

}  // namespace

FormulaError::FormulaError(std::string_view formula, std::size_t position, const std::string& reason)
    : std::runtime_error("formula \"" + std::string(formula) + "\", character " +
                         std::to_string(position + 1) + ": " + reason),
      position_(position) {}

Composition::Composition() : counts(Elements().size(), 0) {}

std::int64_t Composition::CountOf(std::string_view symbol) const {
  const std::int32_t element = FindElement(symbol);
  return element < 0 ? 0 : counts[static_cast<std::size_t>(element)];
}

Composition ParseFormula(std::string_view text) { return FormulaReader(text).Read(); }

double MonoMass(const Composition& composition) {
  return SumOver(composition, [](const Element& element) { return element.MonoMass(); });
}

double AverageMass(const Composition& composition) {
  return SumOver(composition, [](const Element& element) { return element.AverageMass(); });
}

Composition ScaleToMass(const Composition& unit, double monoMass) {
  const double unitMass = MonoMass(unit);
  if (!(monoMass > 0) || !std::isfinite(monoMass) || !(unitMass > 0)) {
    throw std::invalid_argument("A building block can only be scaled to a positive, finite mass.");
  }
  const double units = monoMass / unitMass;
  const std::size_t hydrogen = IndexOf("H");
  Composition scaled;
  for (std::size_t i = 0; i < unit.counts.size(); ++i) {
    if (i != hydrogen) scaled.counts[i] = std::llround(units * static_cast<double>(unit.counts[i]));
  }
  const double rest = (monoMass - MonoMass(scaled)) / Elements()[hydrogen].MonoMass();
  scaled.counts[hydrogen] = std::max<std::int64_t>(0, std::llround(rest));
  return scaled;
}

}  // namespace TslMath
