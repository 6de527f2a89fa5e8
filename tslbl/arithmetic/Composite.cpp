#include <tslbl/arithmetic/Composite.h>

#include <tslbl/arithmetic/InterpCursor.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/MZConvert.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr double kSameStep = 1e-6;  // of a step, too: what rounding adds is no further point
constexpr double kMostPoints = 2147483648.0;

// What of an axis a composite goes by, in m/z.
struct Extent {
  double low;
  double high;
  double span;  // of the calibration
};

double SpanOf(const std::vector<MZCalPt>& points) {
  if (points.size() < 2) return 0.0;
  const auto [low, high] = std::ranges::minmax_element(points, {}, &MZCalPt::MZ);
  return high->MZ - low->MZ;
}

Extent ExtentOf(const Spectrum& spectrum) {
  const MZConvert convert(spectrum.appliedMZCalPts);
  const double last = static_cast<double>(spectrum.QNumPoints()) - 1.0;
  return {convert.DACToMZ(spectrum.startMDAC), convert.DACToMZ(spectrum.startMDAC + spectrum.stepMDAC * last),
          SpanOf(spectrum.appliedMZCalPts)};
}

// Finer steps win, and of equal ones the calibration that covers more.
bool IsBetter(const Spectrum& spectrum, double span, const Spectrum& than, double thanSpan) {
  if (spectrum.stepMDAC < than.stepMDAC) return true;
  return std::abs(spectrum.stepMDAC - than.stepMDAC) <= kSameStep && span > thanSpan;
}

std::size_t PointsBetween(double first, double last, double step) {
  if (step == 0.0) throw std::runtime_error("Divide by zero error");
  const double points = std::ceil((last - first + step) / step - kSameStep);
  if (!(points <= kMostPoints)) throw std::runtime_error("Too many points");
  return static_cast<std::size_t>(std::max(points, 0.0));
}

// All m/z that any of the spectra covers, with the steps and the calibration of the best. Amplitudes are 0.
std::unique_ptr<Spectrum> CompositeGrid(const std::vector<const Spectrum*>& spectra) {
  const Spectrum* best = spectra.front();
  Extent all = ExtentOf(*best);
  for (const Spectrum* spectrum : spectra) {
    const Extent extent = ExtentOf(*spectrum);
    all.low = std::min(all.low, extent.low);
    all.high = std::max(all.high, extent.high);
    if (!IsBetter(*spectrum, extent.span, *best, all.span)) continue;
    best = spectrum;
    all.span = extent.span;
  }
  auto grid = std::make_unique<Spectrum>();
  grid->tuneId = best->tuneId;
  grid->timeStamp = best->timeStamp;
  grid->stepMDAC = best->stepMDAC;
  grid->tuneMZCalPts = grid->appliedMZCalPts = best->appliedMZCalPts;
  const MZConvert convert(best->appliedMZCalPts);
  grid->startMDAC = convert.MZToDAC(all.low);
  grid->yAxis.resize(PointsBetween(grid->startMDAC, convert.MZToDAC(all.high), grid->stepMDAC));
  MZAssign(*grid);
  grid->AddStatus(Curve::STATUS_Y);
  return grid;
}

// Source by source, so that each array is passed once from its beginning to its end; at each point the
// sources are summed in their order all the same.
void AddSource(InterpCursor source, const std::vector<double>& x, std::vector<double>& sum,
               std::vector<double>& counts) {
  const double count = source.Count();
  for (std::size_t i = 0; i < x.size(); ++i) {
    const InterpValue at = source.At(x[i]);
    if (!at.exists) continue;
    sum[i] += at.value;
    counts[i] += count;
  }
}

}  // namespace

std::unique_ptr<Spectrum> CompositeAverage(const std::vector<StateSpectrum>& sources) {
  std::vector<const Spectrum*> spectra;
  for (const StateSpectrum& source : sources) {
    if (source.state == 0) throw std::runtime_error("Divide by zero");
    spectra.push_back(source.spectrum);
  }
  auto average = CompositeGrid(spectra);
  std::vector<double>& sum = average->yAxis;
  std::vector<double> counts(sum.size());
  for (const StateSpectrum& source : sources)
    AddSource(InterpCursor(*source.spectrum, source.state), average->xAxis, sum, counts);
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] = counts[i] > 0.0 ? sum[i] / counts[i] : 0.0;
  return average;
}

std::unique_ptr<Spectrum> CompositeDifference(const Spectrum& a, const Spectrum& b) {
  auto difference = CompositeGrid({&a, &b});
  InterpCursor ofA(a, 1);
  InterpCursor ofB(b, 1);
  for (std::size_t i = 0; i < difference->yAxis.size(); ++i) {
    const double x = difference->xAxis[i];
    const double y = ofA.At(x).value - ofB.At(x).value;
    difference->yAxis[i] = y < 0.0 ? 0.0 : y;
  }
  return difference;
}

}  // namespace TslBL
