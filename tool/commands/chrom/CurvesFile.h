#pragma once
// The definitions of curves in a document of results: its ranges of m/z and the formulas made of them.

#include <string>
#include <vector>

namespace TslTool {

// As CurveChoice takes them.
struct CurveDefinitions {
  std::vector<std::string> ranges;
  std::vector<std::string> definitions;
  bool areMeans = false;  // the chromatograms of the document are means over their ranges, not sums
};

// Takes the elements "MZRanges" and "CurveDefs" out of an element "Results", and what "Chromatograms" says of
// its values, and passes over all others, in bounded memory. The first range is A; the curves stand in the
// order of their ids, by which they also name each other. Throws InputError for a file that cannot be read or
// is not well formed, without one of these elements or with more than one of a kind, for what they do not
// hold, for two curves of one id, and for definitions that are none.
CurveDefinitions LoadCurvesFile(const std::string& file);

}  // namespace TslTool
