#include <tool/commands/chrom/CurveChoice.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/chromatogram/CurveTitles.h>
#include <tslbl/chromatogram/ExtractedCurves.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <cctype>

namespace TslTool {
namespace {

constexpr char kFirst = 'A';
constexpr char kLast = 'J';

char Capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

[[noreturn]] void RefuseRange(const std::string& text, const std::string& reason) {
  throw UsageError(fmt::format("--range: \"{}\": {}", text, reason));
}

// "500-501", or "500.5+-0.5".
RealRange ParseStretch(const std::string& text) {
  const std::size_t sign = text.find("+-");
  if (sign == std::string::npos) return ParseRealRange("--range", text);
  const double centre = ParseReal("--range", std::string_view(text).substr(0, sign));
  const double half = ParseReal("--range", std::string_view(text).substr(sign + 2));
  if (half < 0.0) RefuseRange(text, "what stands behind +- cannot be below 0");
  return {centre - half, centre + half};
}

bool IsSign(char c) { return c == '+' || c == '-'; }

// Operands with one sign between each two. The library takes any row of the two, in which a slip of the
// hand would go unseen: "A-" for "A-B" is A.
void RequireFormula(const std::string& text) {
  bool isRight = text.size() % 2 == 1;
  for (std::size_t i = 0; i < text.size(); ++i) isRight &= IsSign(text[i]) == (i % 2 == 1);
  if (!isRight)
    throw UsageError(
        fmt::format("--curve: \"{}\": letters or numbers with one + or - between each two are expected, "
                    "as in A+B-C",
                    text));
}

// The definition without what the library checks: that each character is one of the language.
std::vector<double> WeightsOf(const std::wstring& definition, std::size_t ranges,
                              const std::vector<std::vector<double>>& earlier) {
  std::vector<double> weights(ranges);
  double sign = 1.0;
  for (const wchar_t c : definition) {
    if (c == L'+' || c == L'-') {
      sign = c == L'+' ? 1.0 : -1.0;
    } else if (c >= L'A') {
      weights[static_cast<std::size_t>(c - L'A')] += sign;
    } else {
      const std::vector<double>& other = earlier[static_cast<std::size_t>(c - L'1')];
      for (std::size_t i = 0; i < ranges; ++i) weights[i] += sign * other[i];
    }
  }
  return weights;
}

}  // namespace

std::string ExtractedRange::Text() const { return fmt::format("{} ({} to {})", letter, from, to); }

CurveChoice::CurveChoice(const std::vector<std::string>& ranges,
                         const std::vector<std::string>& definitions) {
  for (const std::string& text : ranges) AddRange(text);
  if (!definitions.empty() && ranges_.empty())
    throw UsageError("--curve: a definition is made of ranges, as in --range A=500-501 --curve A");
  for (const std::string& text : definitions) AddDefinition(text);
  if (definitions.empty())
    for (const ExtractedRange& range : ranges_) AddDefinition(std::string(1, range.letter));
}

void CurveChoice::AddRange(const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::string name = equals == std::string::npos ? "" : text.substr(0, equals);
  if (equals == 0) RefuseRange(text, "there is no letter before the =");
  if (ranges_.size() > static_cast<std::size_t>(kLast - kFirst))
    RefuseRange(text, "there are letters for ten ranges only");
  const char letter = LetterFor(name, text);
  const RealRange stretch = ParseStretch(equals == std::string::npos ? text : text.substr(equals + 1));
  ranges_.push_back({letter, stretch.from, stretch.to});
}

char CurveChoice::LetterFor(const std::string& name, const std::string& text) const {
  const auto isTaken = [&](char letter) {
    return std::ranges::any_of(ranges_, [=](const ExtractedRange& r) { return r.letter == letter; });
  };
  if (name.empty()) {
    char free = kFirst;
    while (isTaken(free)) ++free;
    return free;
  }
  const char letter = Capital(name.front());
  if (name.size() != 1 || letter < kFirst || letter > kLast)
    RefuseRange(text, fmt::format("\"{}\" is not a letter from A to J, by which definitions name it", name));
  if (isTaken(letter)) RefuseRange(text, fmt::format("there is a range {} already", letter));
  return letter;
}

std::wstring CurveChoice::InOrder(const std::string& definition) const {
  std::wstring ordered = TslCommon::FromUtf8(definition);
  for (wchar_t& c : ordered) {
    const bool isSmall = c >= L'a' && c <= L'j';
    const wchar_t letter = isSmall ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    if (letter < kFirst || letter > kLast) continue;
    const auto found =
        std::ranges::find_if(ranges_, [=](const ExtractedRange& r) { return r.letter == letter; });
    // A letter of no range becomes one beyond those in use, which the library refuses in its words.
    c = static_cast<wchar_t>(kFirst + (found - ranges_.begin()));
  }
  return ordered;
}

void CurveChoice::AddDefinition(const std::string& text) {
  if (text.empty()) throw UsageError("--curve: the value is empty");
  if (std::ranges::find(names_, text) != names_.end())
    throw UsageError(fmt::format("--curve: \"{}\" is given twice", text));
  std::vector<std::wstring> all = definitions_;
  all.push_back(InOrder(text));
  std::vector<double> points;
  std::wstring error;
  if (!TslBL::CalcEICPoints(std::vector<double>(ranges_.size()), all, points, error))
    throw UsageError(fmt::format("--curve: \"{}\": {}", text, TslCommon::ToUtf8(error)));
  RequireFormula(text);
  weights_.push_back(WeightsOf(all.back(), ranges_.size(), weights_));
  definitions_ = std::move(all);
  names_.push_back(text);
}

std::string CurveChoice::Title(std::size_t curve) const {
  std::vector<TslBL::MZRange> ranges;
  for (const ExtractedRange& range : ranges_) {
    TslBL::MZRange& all = ranges.emplace_back();
    all.Type = TslBL::MZRange::Partial;
    all.Start = range.from;
    all.End = range.to;
  }
  return TslCommon::ToUtf8(TslBL::GenerateEICCurveTitle(definitions_[curve], ranges));
}

void CurveChoice::Points(const std::vector<double>& values, std::vector<double>& points) const {
  std::wstring error;
  TslBL::CalcEICPoints(values, definitions_, points, error);
}

}  // namespace TslTool
