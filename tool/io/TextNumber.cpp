#include <tool/io/TextNumber.h>

#include <tool/frame/Printable.h>

#include <algorithm>
#include <charconv>
#include <cmath>
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

// One to three digits, a mark, three digits and no fourth.
bool HasThousands(std::string_view text) {
  text = WithoutSign(text);
  const std::size_t leading = CountDigits(text);
  if (leading < 1 || leading > 3 || leading == text.size()) return false;
  constexpr std::string_view kMarks = ",.' ";
  return kMarks.find(text[leading]) != std::string_view::npos && CountDigits(text.substr(leading + 1)) == 3;
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
  if (error != std::errc() && HasThousands(text)) {
    throw std::runtime_error(quoted +
                             "not a number; thousands have no mark, and the decimal mark is the same in the "
                             "whole file");
  }
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
