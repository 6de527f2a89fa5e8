#include <tool/commands/chrom/CurveRemarks.h>

#include <fmt/format.h>

#include <tool/chain/FlatTop.h>
#include <tool/frame/Printable.h>
#include <algorithm>
#include <optional>

namespace TslTool {
namespace {

constexpr double kHalf = 0.5;   // of a height
constexpr double kDeep = 10.0;  // noise

// Seconds, like the others below.
std::optional<double> FlatTopOf(const EvaluatedCurve& curve) {
  const auto at = FindFlatTop(curve.measured.values);
  return at ? std::optional(curve.measured.seconds[*at]) : std::nullopt;
}

bool IsCutOff(const TslBL::PeakInfo& peak, const std::vector<double>& values) {
  const double half = peak.baselineAmpl + kHalf * (peak.ReportedAmpl() - peak.baselineAmpl);
  return (peak.startIdx == 0 && values.front() > half) ||
         (peak.endIdx + 1 == values.size() && values.back() > half);
}

std::optional<double> CutOffPeakOf(const EvaluatedCurve& curve) {
  for (const ChromPeak& peak : curve.peaks)
    if (IsCutOff(curve.curve.peaks[peak.row], curve.curve.yAxis)) return peak.rtSeconds;
  return std::nullopt;
}

// Where it is deepest. It shows in the measured points as well: smoothing alone makes small ones beside
// peaks.
std::optional<double> DipOf(const EvaluatedCurve& curve) {
  const TslBL::ICObj& evaluated = curve.curve;
  const std::size_t points = evaluated.yAxis.size();
  if (curve.peaks.empty() || evaluated.baseline.size() != points || evaluated.noise.size() != points)
    return std::nullopt;
  std::optional<double> seconds;
  double deepest = kDeep;
  for (std::size_t i = 0; i < points; ++i) {
    const double depth = evaluated.baseline[i] - std::max(evaluated.yAxis[i], curve.measured.values[i]);
    if (!(depth > deepest * evaluated.noise[i])) continue;
    deepest = depth / evaluated.noise[i];
    seconds = curve.measured.seconds[i];
  }
  return seconds;
}

struct Trouble {
  std::optional<double> (*find)(const EvaluatedCurve& curve);
  const char* text;
  const char* effect;
};
constexpr Trouble kTroubles[] = {
    {FlatTopOf, "has a flat top of 4 points or more, as of a detector at its end, at {:.1f} s",
     "heights and areas are too low there"},
    {CutOffPeakOf, "ends above half the height of its peak at {:.1f} s", "the area of a part is reported"},
    {DipOf, "dips below its baseline at {:.1f} s", "peaks beside it may be none"},
};

std::string TextOf(const Trouble& trouble, const std::vector<EvaluatedCurve>& curves) {
  std::string text;
  std::size_t others = 0;
  for (const EvaluatedCurve& curve : curves) {
    const std::optional<double> seconds = trouble.find(curve);
    if (!seconds) continue;
    if (text.empty())
      text = Printable(curve.measured.name) + " " + fmt::format(fmt::runtime(trouble.text), *seconds);
    else
      ++others;
  }
  if (text.empty()) return "";
  if (others > 0) text += fmt::format(", and {} other curve{}, too", others, others == 1 ? "" : "s");
  return text + "; " + trouble.effect;
}

}  // namespace

std::string LeftOutNote(const std::vector<EvaluatedCurve>& curves) {
  std::size_t leftOut = 0;
  for (const EvaluatedCurve& curve : curves) leftOut += curve.leftOut;
  if (leftOut == 0) return "";
  const bool isOne = leftOut == 1;
  return fmt::format("{} peak{} left out that {} no area above the level beside {}", leftOut,
                     isOne ? "" : "s", isOne ? "has" : "have", isOne ? "it" : "them");
}

std::vector<std::string> CurveWarnings(const std::vector<EvaluatedCurve>& curves) {
  std::vector<std::string> texts;
  for (const Trouble& trouble : kTroubles)
    if (std::string text = TextOf(trouble, curves); !text.empty()) texts.push_back(std::move(text));
  return texts;
}

}  // namespace TslTool
