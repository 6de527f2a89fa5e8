#include <tool/io/SpectrumSource.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/io/Axis.h>
#include <tool/io/FillGaps.h>
#include <tool/io/FillGrid.h>
#include <tool/io/JudgedRepresentation.h>
#include <tool/io/OpenScans.h>
#include <tool/io/PeakListSpectrum.h>
#include <tool/io/RoundedAxis.h>
#include <tool/io/RunFile.h>
#include <tool/io/SkipCounts.h>
#include <tool/simulate/Simulator.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <algorithm>
#include <atomic>
#include <cmath>

namespace TslTool {
namespace {

std::string PlaceOf(std::uint32_t scan) { return "scan " + std::to_string(scan); }

// `calibration` is that of the m/z axis; null is the tune's own.
void LoadCounts(const TslBL::Tune& tune, const std::vector<TslBL::MZCalPt>* calibration,
                TslBL::RawSpectrum& raw, LoadedSpectrum& loaded) {
  std::vector<double> one = {1.0};
  TslBL::AssignCountRateAmpl(one, tune, nullptr);
  loaded.countAmpl = one.front();
  TslBL::AssignCountRateAmpl(raw.counts, tune, &raw.info.TIC);
  loaded.spectrum.reset(TslBL::CreateSpectrum(tune, raw, calibration));
}

constexpr const char* kTooShort = "of less than two points";

class RunSpectra final : public SpectrumSource {
 public:
  RunSpectra(const std::string& file, const SpectrumChoice& choice)
      : file_(file), reader_(file, choice.filter), filter_(choice.filter), skipped_(file, choice.strict) {
    if (choice.takenAs == Scan::Centroid) throw InputError(file, "", "holds profiles, as every run does");
  }

  std::function<LoadedSpectrum()> Next() override {
    for (;;) {
      const auto scan = std::make_shared<PackedScan>();
      if (!reader_.Next(*scan)) return {};
      if (!filter_.Wants(reader_.HeadOf(*scan))) continue;
      if (scan->points < 2) {
        skipped_.Skip(kTooShort, PlaceOf(scan->number));
        continue;
      }
      skipped_.CountTaken();
      return [this, scan] { return Load(*scan); };
    }
  }
  std::optional<std::uint64_t> Count() const override {
    return filter_.WantsAll() ? std::optional(reader_.Count()) : std::nullopt;
  }
  std::string Format() const override { return "run of raw counts"; }
  std::string Skipped() const override { return skipped_.Text(); }
  std::optional<double> MzStep() const override {
    if (reader_.Tunes().empty()) return std::nullopt;
    return reader_.Tunes().begin()->second.ControlData.MZStepSize;
  }

 private:
  LoadedSpectrum Load(const PackedScan& scan) const {
    TslBL::RawSpectrum raw;
    reader_.Unpack(scan, raw);
    const TslBL::Tune& tune = reader_.TuneOf(scan.number, raw);
    const std::string tuneText = "tune " + std::to_string(raw.info.TuneId) + ": ";
    LoadedSpectrum loaded{scan.number, raw.info.TimeStamp / 1000.0, nullptr};
    loaded.msLevel = kRunLevel;
    loaded.polarity = PolarityOf(tune);
    try {
      LoadCounts(tune, reader_.CalibrationOf(raw.info.TuneId), raw, loaded);
    } catch (const std::exception& e) {
      throw InputError(file_, PlaceOf(scan.number), tuneText + e.what());
    }
    if (!Ascends(loaded.spectrum->xAxis))
      throw InputError(file_, PlaceOf(scan.number), tuneText + "its calibration gives no ascending m/z");
    return loaded;
  }

  std::string file_;
  RunReader reader_;
  ScanFilter filter_;
  SkipCounts skipped_;
};

class ForeignSpectra final : public SpectrumSource {
 public:
  ForeignSpectra(const std::string& file, const SpectrumChoice& choice)
      : file_(file), scans_(OpenScans(file)), choice_(choice), skipped_(file, choice.strict) {
    scans_->SetFilter(choice.filter);
  }

  std::function<LoadedSpectrum()> Next() override {
    for (;;) {
      const auto scan = std::make_shared<Scan>();
      if (!scans_->Next(*scan)) return {};
      if (scan->defect) {
        skipped_.Skip(*scan->defect);
        continue;
      }
      if (choice_.withPeakLists && IsPeakList(*scan)) {
        skipped_.CountTaken();
        CountFaint(*scan);
        return [scan] { return LoadPeaks(*scan); };
      }
      if (const std::string reason = ReasonToSkip(*scan); !reason.empty()) {
        skipped_.Skip(reason, PlaceOf(scan->number));
        continue;
      }
      skipped_.CountTaken();
      return [this, scan] { return LoadProfile(*scan); };
    }
  }
  std::optional<std::uint64_t> Count() const override {
    return choice_.filter.WantsAll() ? scans_->Count() : std::nullopt;
  }
  std::string Format() const override { return scans_->Format(); }
  IdFormat Ids() const override { return scans_->Ids(); }
  std::vector<std::string> Notes() const override {
    std::vector<std::string> notes = scans_->Notes();
    if (const std::uint64_t count = filled_; count > 0)
      notes.push_back(fmt::format("points left out of {} {} taken for zeros", count,
                                  count == 1 ? "spectrum" : "spectra"));
    if (const std::uint64_t count = rounded_; count > 0)
      notes.push_back(fmt::format("m/z of {} {} rounded to too few decimals for the steps; evened out", count,
                                  count == 1 ? "spectrum" : "spectra"));
    return notes;
  }
  std::string Skipped() const override { return skipped_.Text(); }
  bool LeavesOutZeros() const override { return filled_ > 0; }
  bool SkippedCentroids() const override { return skippedCentroids_; }
  Chromatograms PassedOver() const override { return scans_->PassedOver(); }
  std::vector<std::string> Warnings() const override {
    std::vector<std::string> texts = scans_->Warnings();
    for (std::string& text : odd_.Texts()) texts.push_back(std::move(text));
    if (faint_ > 0)
      texts.push_back(fmt::format("{} left out of lists of peaks, the intensity not being above 0",
                                  faint_ == 1 ? "1 peak" : fmt::format("{} peaks", faint_)));
    return texts;
  }

 private:
  std::string ReasonToSkip(const Scan& scan) {
    if (scan.mz.size() < 2) return kTooShort;
    if (choice_.takenAs == Scan::Profile) return "";
    if (choice_.takenAs == Scan::Centroid) return "taken as centroid";
    const Scan::Representation judged = JudgedRepresentation(scan);
    if (judged == Scan::Centroid) {
      skippedCentroids_ = true;
      if (scan.representation == Scan::Centroid) return "marked as centroid";
      return scan.representation == Scan::Profile
                 ? "marked as profile, but centroid by the spacing of their points"
                 : "centroid by the spacing of their points";
    }
    if (scan.representation == Scan::Centroid)
      odd_.Add("marked as centroid, taken as profile by the spacing of their points", PlaceOf(scan.number));
    return "";
  }

  void CountFaint(const Scan& scan) {
    faint_ += static_cast<std::uint64_t>(
        std::ranges::count_if(scan.amplitude, [](double intensity) { return !(intensity > 0.0); }));
  }

  bool IsPeakList(const Scan& scan) const {
    if (scan.mz.empty()) return false;
    if (choice_.takenAs != Scan::Unknown) return choice_.takenAs == Scan::Centroid;
    return JudgedRepresentation(scan) == Scan::Centroid;
  }

  static LoadedSpectrum Loaded(const Scan& scan) {
    LoadedSpectrum loaded{scan.number, scan.rtSeconds, nullptr, scan.id};
    loaded.msLevel = scan.msLevel;
    loaded.polarity = scan.polarity;
    loaded.function = scan.function;
    return loaded;
  }

  static LoadedSpectrum LoadPeaks(const Scan& scan) {
    LoadedSpectrum loaded = Loaded(scan);
    loaded.spectrum = PeakListSpectrum(scan.mz, scan.amplitude);
    loaded.isPeakList = true;
    return loaded;
  }

  LoadedSpectrum LoadProfile(Scan& scan) {
    if (TakeRoundingOff(scan.mz)) ++rounded_;
    if (FillGrid(scan.mz, scan.amplitude) || FillGaps(scan.mz, scan.amplitude) > 0) ++filled_;
    TslBL::RawSpectrum raw;
    raw.info.Id = scan.number;
    raw.info.TimeStamp =
        TslCommon::Truncate<std::uint32_t>(std::isnan(scan.rtSeconds) ? 0.0 : scan.rtSeconds * 1000.0 + 0.5);
    for (const double amplitude : scan.amplitude) raw.info.TIC += amplitude;
    raw.counts = scan.amplitude;
    const double step = scan.mz.size() > 1 ? scan.mz[1] - scan.mz[0] : 0.0;
    LoadedSpectrum loaded = Loaded(scan);
    loaded.spectrum.reset(TslBL::CreateSpectrum(raw, {}, {}, scan.mz.front(), step, scan.mz));
    return loaded;
  }

  std::string file_;
  std::unique_ptr<ScanSource> scans_;
  SpectrumChoice choice_;
  SkipCounts skipped_;
  bool skippedCentroids_ = false;
  std::atomic<std::uint64_t> filled_ = 0;  // spectra, by all threads
  std::atomic<std::uint64_t> rounded_ = 0;
  std::uint64_t faint_ = 0;  // peaks
  WarningCounts odd_;
};

class DemonstrationSpectra final : public SpectrumSource {
 public:
  explicit DemonstrationSpectra(const SpectrumChoice& choice) : filter_(choice.filter) {}

  std::function<LoadedSpectrum()> Next() override {
    while (next_ < simulator_.Scans()) {
      const std::uint32_t index = next_++;
      Scan header;
      header.number = index + 1;
      header.rtSeconds = simulator_.TimeStamp(index) / 1000.0;
      header.msLevel = kRunLevel;
      header.polarity = PolarityOf(simulator_.Tune());
      if (filter_.Wants(header)) return [this, index] { return Load(index); };
    }
    return {};
  }
  std::optional<std::uint64_t> Count() const override {
    return filter_.WantsAll() ? std::optional<std::uint64_t>(simulator_.Scans()) : std::nullopt;
  }
  std::string Format() const override { return "built-in demonstration run"; }
  std::optional<double> MzStep() const override { return simulator_.Tune().ControlData.MZStepSize; }

 private:
  LoadedSpectrum Load(std::uint32_t index) const {
    TslBL::RawSpectrum raw = simulator_.MakeScan(index);
    LoadedSpectrum loaded{index + 1, raw.info.TimeStamp / 1000.0, nullptr};
    loaded.msLevel = kRunLevel;
    loaded.polarity = PolarityOf(simulator_.Tune());
    LoadCounts(simulator_.Tune(), nullptr, raw, loaded);
    return loaded;
  }

  ScanFilter filter_;
  Simulator simulator_;
  std::uint32_t next_ = 0;
};

}  // namespace

std::unique_ptr<SpectrumSource> OpenSpectra(const std::string& input, const SpectrumChoice& choice) {
  const bool isRun = input.empty() || IsDatabase(input);
  if (isRun && choice.filter.columns.IsGiven()) ScanSource::RefuseColumns("a run");
  if (input.empty()) return std::make_unique<DemonstrationSpectra>(choice);
  if (isRun) return std::make_unique<RunSpectra>(input, choice);
  return std::make_unique<ForeignSpectra>(input, choice);
}

}  // namespace TslTool
