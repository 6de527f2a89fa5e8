#include <tool/commands/average/AverageOf.h>

#include <fmt/format.h>

#include <tool/commands/average/OnLine.h>
#include <tool/commands/average/ProfileSum.h>
#include <tool/commands/peaks/RefuseNothing.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Progress.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/SkipCounts.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <cmath>

namespace TslTool {
namespace {

std::string PlaceOf(std::uint32_t scan) { return fmt::format("scan {}", scan); }

// What the spectra of an average have in common.
class CommonHead {
 public:
  explicit CommonHead(std::string file) : file_(std::move(file)) {}

  template <class Head>
  void Add(std::uint32_t scan, const Head& head) {
    if (count_++ == 0) {
      first_.scan = scan;
      first_.msLevel = head.msLevel;
      first_.polarity = head.polarity;
      first_.function = head.function;
    }
    if (head.msLevel != first_.msLevel)
      Refuse(scan,
             fmt::format("is of MS level {}, and scan {} of level {}", head.msLevel, first_.scan,
                         first_.msLevel),
             "--ms-level");
    if (head.polarity != first_.polarity)
      Refuse(scan, fmt::format("is of another polarity than scan {}", first_.scan), "--polarity");
    if (head.function != first_.function && head.msLevel <= 1)
      Refuse(scan,
             fmt::format("is of function {}, and scan {} of function {}", head.function, first_.scan,
                         first_.function),
             "--function");
    times_ += head.rtSeconds;
  }
  LoadedSpectrum Take() {
    first_.rtSeconds = times_ / count_;
    return std::move(first_);
  }
  std::uint32_t Count() const { return count_; }

 private:
  [[noreturn]] void Refuse(std::uint32_t scan, const std::string& reason, const char* option) const {
    throw InputError(
        InputName(file_), PlaceOf(scan),
        fmt::format("{}: scans of different kinds are not averaged; {} chooses", reason, option));
  }

  std::string file_;
  LoadedSpectrum first_;
  double times_ = 0.0;
  std::uint32_t count_ = 0;
};

[[noreturn]] void RefuseNothing(const std::string& input, const SpectrumChoice& choice) {
  const auto source = OpenSpectra(input, choice);
  while (source->Next()) ThrowIfInterrupted();
  RefuseNothing(input, choice, *source);
}

double CountAmplOf(const TslBL::Tune& tune, std::uint32_t scans) {
  std::vector<double> one = {1.0};
  TslBL::AssignCountRateAmpl(one, tune, nullptr);
  return one.front() / scans;
}

Averaged AverageOfRun(const std::string& input, const SpectrumChoice& choice) {
  if (choice.filter.columns.IsGiven()) ScanSource::RefuseColumns("a run");
  RunReader reader(input, choice.filter);
  SkipCounts skipped(input, choice.strict);
  CommonHead head(input);
  RunSum sum;
  Progress progress(choice.filter.WantsAll() ? std::optional(reader.Count()) : std::nullopt, "scans");
  TslBL::RawSpectrum raw;
  for (PackedScan packed; reader.Next(packed); ThrowIfInterrupted()) {
    const Scan scan = reader.HeadOf(packed);
    if (!choice.filter.Wants(scan)) continue;
    if (packed.points < 2) {
      skipped.Skip("of less than two points", PlaceOf(scan.number));
      continue;
    }
    reader.Unpack(packed, raw);
    reader.TuneOf(scan.number, raw);
    head.Add(scan.number, scan);
    skipped.CountTaken();
    sum.Add(raw);
    progress.Step();
  }
  if (head.Count() == 0) RefuseNothing(input, choice);
  Averaged averaged{head.Take(), head.Count(), {}};
  averaged.loaded.spectrum = sum.Average(input, reader);
  averaged.isOneAxis = sum.All().size() == 1;
  if (averaged.isOneAxis) {
    averaged.sum = sum.All().begin()->second;
    averaged.loaded.countAmpl =
        CountAmplOf(reader.Tunes().at(averaged.sum->raw.info.TuneId), averaged.spectra);
  }
  if (const std::string text = skipped.Text(); !text.empty()) averaged.warnings.push_back(text);
  return averaged;
}

std::unique_ptr<TslBL::Spectrum> SpectrumOf(const LoadedSpectrum& head, const std::vector<double>& mz,
                                            std::vector<double> amplitude) {
  TslBL::RawSpectrum raw;
  raw.info.Id = head.scan;
  raw.info.TimeStamp =
      TslCommon::Truncate<std::uint32_t>(std::isnan(head.rtSeconds) ? 0.0 : head.rtSeconds * 1000.0 + 0.5);
  for (const double value : amplitude) raw.info.TIC += value;
  raw.counts = std::move(amplitude);
  return std::unique_ptr<TslBL::Spectrum>(TslBL::CreateSpectrum(raw, {}, {}, mz.front(), mz[1] - mz[0], mz));
}

Averaged AverageOfProfiles(const std::string& input, const SpectrumChoice& choice) {
  const auto source = OpenSpectra(input, choice);
  CommonHead head(input);
  ProfileSum sum;
  Progress progress(source->Count(), "scans");
  double countAmpl = 0.0;
  while (const auto load = source->Next()) {
    ThrowIfInterrupted();
    const LoadedSpectrum loaded = load();
    head.Add(loaded.scan, loaded);
    sum.Add(loaded.spectrum->xAxis, loaded.spectrum->yAxis);
    countAmpl = loaded.countAmpl;
    progress.Step();
  }
  if (head.Count() == 0) RefuseNothing(input, choice, *source);
  Averaged averaged{head.Take(), head.Count(), {}};
  averaged.loaded.spectrum = SpectrumOf(averaged.loaded, sum.Mz(), sum.Mean(source->LeavesOutZeros()));
  averaged.isOneAxis = sum.IsOneAxis();
  if (averaged.isOneAxis) averaged.loaded.countAmpl = countAmpl / averaged.spectra;
  averaged.ids = source->Ids();
  averaged.notes = source->Notes();
  averaged.warnings = source->Warnings();
  if (const std::string text = source->Skipped(); !text.empty())
    averaged.warnings.insert(averaged.warnings.begin(), text);
  return averaged;
}

}  // namespace

Averaged AverageOf(const std::string& input, const SpectrumChoice& choice) {
  return !input.empty() && IsDatabase(input) ? AverageOfRun(input, choice) : AverageOfProfiles(input, choice);
}

std::size_t Subtract(Averaged& averaged, const Averaged& background) {
  TslBL::Spectrum& from = *averaged.loaded.spectrum;
  const TslBL::Spectrum& what = *background.loaded.spectrum;
  const std::vector<double>& x = what.xAxis;
  std::size_t beyond = 0;
  std::size_t right = 1;
  for (std::size_t i = 0; i < from.yAxis.size(); ++i) {
    const double at = from.xAxis[i];
    if (at < x.front() || at > x.back()) {
      ++beyond;
      continue;
    }
    while (x[right] < at) ++right;
    const std::size_t left = right - 1;
    from.yAxis[i] -= OnLine(at, x[left], what.yAxis[left], x[right], what.yAxis[right]);
  }
  averaged.sum.reset();
  averaged.loaded.countAmpl = 0.0;
  return beyond;
}

}  // namespace TslTool
