#pragma once
// Which curves are extracted: ranges of m/z that have a letter, and formulas of them.

#include <cstddef>
#include <string>
#include <vector>

namespace TslTool {

struct ExtractedRange {
  char letter = 'A';  // A to J
  double from = 0.0;  // m/z, both ends included
  double to = 0.0;

  // As in "A (500 to 501)".
  std::string Text() const;
};

class CurveChoice {
 public:
  // `ranges` are "A=500-501", "A=500.5+-0.5", or the same without a letter, which takes the first that is
  // free; `definitions` are formulas of the letters, and of the numbers of definitions before them, as
  // ExtractedCurves.h has them. Without definitions each range is a curve. Throws UsageError for what is
  // none of these, for a letter that two ranges have, and for a definition that names what there is not or is
  // other than operands with one sign between each two.
  CurveChoice(const std::vector<std::string>& ranges, const std::vector<std::string>& definitions);

  const std::vector<ExtractedRange>& Ranges() const { return ranges_; }
  std::size_t Count() const { return names_.size(); }
  // The definition as the user wrote it, or the letter of the range.
  const std::string& Name(std::size_t curve) const { return names_[curve]; }
  // What it means, as in "500 to 501-600 to 601".
  std::string Title(std::size_t curve) const;

  // The formula as the library takes it: the first range is A, the second B.
  const std::wstring& Definition(std::size_t curve) const { return definitions_[curve]; }

  // The points of the curves for a value of each range.
  void Points(const std::vector<double>& values, std::vector<double>& points) const;
  // How often each range counts in a curve: 1 and -1 in "A-B". Its points are cut at 0, which these do not
  // tell.
  const std::vector<double>& Weights(std::size_t curve) const { return weights_[curve]; }

 private:
  void AddRange(const std::string& text);
  void AddDefinition(const std::string& text);
  char LetterFor(const std::string& name, const std::string& text) const;
  // With the letters A, B, C ... for the ranges in their order.
  std::wstring InOrder(const std::string& definition) const;

  std::vector<ExtractedRange> ranges_;
  std::vector<std::string> names_;
  std::vector<std::wstring> definitions_;
  std::vector<std::vector<double>> weights_;
};

}  // namespace TslTool
