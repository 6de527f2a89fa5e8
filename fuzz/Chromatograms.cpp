// Chromatograms: the definitions of curves, and traces of text and mzML. The first byte says what the rest
// is.
//
// A definition: lines of ranges, an empty line, lines of definitions. What is taken must give the sum that
// its weights tell, wherever nothing was cut at 0. A trace must ascend, and a refusal name the file.

#include <fuzz/Input.h>
#include <tool/commands/chrom/CurveChoice.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/io/MzMLChromatograms.h>
#include <tool/io/TraceFile.h>
#include <cmath>
#include <functional>
#include <vector>

using namespace fuzz;

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

void CheckPoints(const TslTool::CurveChoice& choice) {
  // Powers of two, of which sums are exact.
  std::vector<double> values;
  for (std::size_t i = 0; i < choice.Ranges().size(); ++i)
    values.push_back(std::ldexp(1.0, static_cast<int>(i)));
  std::vector<double> points;
  choice.Points(values, points);
  Require(points.size() == choice.Count(), "each curve has a point");
  for (std::size_t i = 0; i < points.size(); ++i) {
    Require(points[i] >= 0.0, "no point is below 0");
    Require(!choice.Title(i).empty(), "a curve has a title");
    const bool isOfRanges = choice.Name(i).find_first_of("12345678") == std::string::npos;
    if (!isOfRanges) continue;
    double sum = 0.0;
    for (std::size_t k = 0; k < values.size(); ++k) sum += choice.Weights(i)[k] * values[k];
    Require(points[i] == std::max(sum, 0.0), "a point is the sum that its weights tell");
  }
}

void CheckDefinitions(std::string_view text) {
  const std::size_t parting = std::min(text.find("\n\n"), text.size());
  try {
    CheckPoints(TslTool::CurveChoice(LinesOf(text.substr(0, parting)),
                                     LinesOf(text.substr(std::min(parting + 2, text.size())))));
  } catch (const TslTool::UsageError& error) {
    Require(error.what()[0] == '-', "a refusal names the option");
  }
}

void CheckTraces(const std::string& file, const std::function<TslTool::Traces()>& read) {
  try {
    for (const TslTool::Trace& trace : read().all) {
      Require(trace.seconds.size() == trace.values.size() && trace.seconds.size() >= 2, "a trace has points");
      Require(std::ranges::adjacent_find(trace.seconds, std::greater_equal()) == trace.seconds.end(),
              "times ascend");
      Require(std::ranges::all_of(trace.values, [](double value) { return std::isfinite(value); }),
              "values are finite");
    }
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const std::size_t kind = input.Below(6);
  if (kind < 2) {
    CheckDefinitions(input.Rest());
  } else if (kind < 5) {
    const std::string file = FileWith("in.csv", input.Rest());
    constexpr const char* kColumns[] = {"", "1,2", "time,b"};
    TslTool::TraceChoice choice{TslTool::ParseColumnChoice("--columns", kColumns[kind - 2])};
    CheckTraces(file, [&] { return TslTool::ReadTraces(TslTool::ByteSource(file), choice); });
  } else {
    const std::string file = FileWith("in.mzML", input.Rest());
    const std::string only = input.Rest().size() % 2 == 0 ? "" : "0";
    CheckTraces(file, [&] { return TslTool::ReadChromatograms(TslTool::ByteSource(file), only); });
  }
  return 0;
}
