#include <tool/commands/simulate/InstrumentOptions.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/TuneField.h>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::TuneField;

constexpr int kLeastPoints = 4;      // across a line
constexpr double kMostWidth = 10.0;  // m/z

TslBL::Limits LimitsOf(TuneField::Id field) {
  return TslBL::FieldLimits().QLimits(TslBL::Probes::ESI, static_cast<int>(field));
}

bool IsWhole(double steps) { return std::abs(steps - std::round(steps)) < 1e-6; }

}  // namespace

void InstrumentOptions::Declare(Options& options) {
  const Instrument usual;
  options.Value("--mz A-B", range_,
                fmt::format("Range of m/z that is scanned [{}-{}]", usual.mzLow, usual.mzHigh));
  options.Value("--mz-step X", step_, fmt::format("From point to point, m/z [{}]", usual.mzStep));
  options.Value("--width X", width_,
                fmt::format("Full width of a line at half its height, m/z [{}]", usual.width));
}

Instrument InstrumentOptions::Get() const {
  Instrument instrument;
  TakeStep(instrument);
  TakeWidth(instrument);
  TakeRange(instrument);
  return instrument;
}

void InstrumentOptions::TakeStep(Instrument& instrument) const {
  if (!step_) return;
  const TslBL::Limits limits = LimitsOf(TuneField::MZStepSize);
  if (!(*step_ >= limits.Min && *step_ <= limits.Max))
    throw UsageError(fmt::format("--mz-step: {} is not from {} to {} m/z", *step_, limits.Min, limits.Max));
  if (!IsWhole(*step_ / limits.Step))
    throw UsageError(
        fmt::format("--mz-step: {} is no multiple of the instrument's {} m/z", *step_, limits.Step));
  instrument.mzStep = *step_;
}

void InstrumentOptions::TakeWidth(Instrument& instrument) const {
  instrument.width = width_.value_or(instrument.width);
  const double least = kLeastPoints * instrument.mzStep;
  if (instrument.width >= least - 1e-9 && instrument.width <= kMostWidth) return;
  if (!width_)
    throw UsageError(
        fmt::format("--mz-step: steps of {} m/z give a line of the usual width, {} m/z, fewer than {} "
                    "points; --width {} is the least for them",
                    instrument.mzStep, instrument.width, kLeastPoints, least));
  if (instrument.width > kMostWidth)
    throw UsageError(fmt::format("--width: {} is more than {} m/z", instrument.width, kMostWidth));
  throw UsageError(fmt::format(
      "--width: a line of {} m/z has fewer than {} points in steps of {} m/z; the least width is {}",
      instrument.width, kLeastPoints, instrument.mzStep, least));
}

void InstrumentOptions::TakeRange(Instrument& instrument) const {
  if (range_.empty()) return;
  const RealRange range = ParseRealRange("--mz", range_);
  const double low = LimitsOf(TuneField::MZLow).Min;
  const double high = LimitsOf(TuneField::MZHi).Max;
  if (!(range.from >= low && range.to <= high))
    throw UsageError(
        fmt::format("--mz: \"{}\" is not within what the instrument scans, m/z {} to {}", range_, low, high));
  if (range.to - range.from < instrument.width)
    throw UsageError(fmt::format("--mz: \"{}\" is narrower than a line, {} m/z", range_, instrument.width));
  instrument.mzLow = range.from;
  instrument.mzHigh = range.to;
}

}  // namespace TslTool
