#include <tool/io/TextNumber.h>

#include <tool/frame/Printable.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace TslTool {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view WithoutSign(std::string_view text) {
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
  return text;
}

std::size_t CountDigits(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
}

// What programs of all countries put between thousands. Those that cannot be told from a blank have a name.
struct ThousandsMark {
  std::string_view text, name = "";
};
constexpr ThousandsMark kThousandsMarks[] = {{","},
                                             {"."},
                                             {"'"},
                                             {"\u2019"},
                                             {" "},
                                             {"\u00a0", "a no-break space"},
                                             {"\xa0", "a no-break space"},
                                             {"\u202f", "a narrow no-break space"},
                                             {"\u2007", "a figure space"},
                                             {"\u2009", "a thin space"}};

// The mark in one to three digits, a mark, three digits and no fourth; null if the text is not of that form.
const ThousandsMark* FindThousandsMark(std::string_view text) {
  text = WithoutSign(text);
  const std::size_t leading = CountDigits(text);
  if (leading < 1 || leading > 3) return nullptr;
  text.remove_prefix(leading);
  const auto* mark =
      std::ranges::find_if(kThousandsMarks, [&](const auto& known) { return text.starts_with(known.text); });
  if (mark == std::end(kThousandsMarks)) return nullptr;
  return CountDigits(text.substr(mark->text.size())) == 3 ? mark : nullptr;
}

std::string ReasonOfMark(const ThousandsMark& mark) {
  const std::string named =
      mark.name.empty() ? "" : ": " + std::string(mark.name) + " stands between its digits";
  return "not a number" + named +
         "; thousands have no mark, and the decimal mark is the same in the whole file";
}

std::errc Parse(std::string_view text, char decimal, double& value) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  std::string pointed;
  if (decimal == ',') {
    if (text.find('.') != std::string_view::npos) return std::errc::invalid_argument;
    pointed = text;
    std::ranges::replace(pointed, ',', '.');
    text = pointed;
  }
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end != text.data() + text.size() ? std::errc::invalid_argument : error;
}

}  // namespace

double ToNumber(std::string_view text, char decimal) {
  double value = 0;
  const std::errc error = Parse(text, decimal, value);
  const std::string quoted = "\"" + Printable(text) + "\" is ";
  if (error == std::errc::result_out_of_range)
    throw std::runtime_error(quoted + "beyond the range of numbers");
  if (const ThousandsMark* mark = FindThousandsMark(text); error != std::errc() && mark)
    throw std::runtime_error(quoted + ReasonOfMark(*mark));
  if (error != std::errc()) throw std::runtime_error(quoted + "not a number");
  if (!std::isfinite(value)) throw std::runtime_error(quoted + "not a finite number");
  return value;
}

bool IsNumber(std::string_view text, char decimal) {
  double value = 0;
  return Parse(text, decimal, value) == std::errc() && std::isfinite(value);
}

bool LooksLikeNumber(std::string_view text) {
  const std::string_view digits = WithoutSign(text);
  const bool isPointed = digits.size() > 1 && (digits[0] == '.' || digits[0] == ',') && IsDigit(digits[1]);
  if (isPointed || (!digits.empty() && IsDigit(digits[0]))) return true;
  double value = 0;
  return Parse(text, '.', value) == std::errc();
}

bool HasUnclearComma(std::string_view text) {
  text = WithoutSign(text);
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos || comma < 1 || comma > 3 || text[0] == '0') return false;
  return text.size() == comma + 4 && CountDigits(text.substr(0, comma)) == comma &&
         CountDigits(text.substr(comma + 1)) == 3;
}

}  // namespace TslTool
