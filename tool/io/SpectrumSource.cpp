#include <tool/io/SpectrumSource.h>

#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <tool/simulate/Simulator.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <algorithm>
#include <cmath>
#include <functional>

namespace TslTool {
namespace {

std::string PlaceOf(std::uint32_t scan) { return "scan " + std::to_string(scan); }

std::unique_ptr<TslBL::Spectrum> FromCounts(const TslBL::Tune& tune, TslBL::RawSpectrum& raw) {
  TslBL::AssignCountRateAmpl(raw.counts, tune, &raw.info.TIC);
  return std::unique_ptr<TslBL::Spectrum>(TslBL::CreateSpectrum(tune, raw, nullptr));
}

bool Ascends(const std::vector<double>& x) {
  return std::ranges::all_of(x, [](double value) { return std::isfinite(value); }) &&
         std::ranges::adjacent_find(x, std::greater_equal<>()) == x.end();
}

class RunSpectra final : public SpectrumSource {
 public:
  RunSpectra(const std::string& file, const ScanFilter& filter)
      : file_(file), reader_(file, filter), all_(filter.WantsAll()) {}

  std::function<LoadedSpectrum()> Next() override {
    const auto scan = std::make_shared<PackedScan>();
    if (!reader_.Next(*scan)) return {};
    return [this, scan] { return Load(*scan); };
  }
  std::optional<std::uint64_t> Count() const override {
    return all_ ? std::optional(reader_.Count()) : std::nullopt;
  }
  std::string Format() const override { return "run of raw counts"; }
  std::optional<double> MzStep() const override {
    if (reader_.Tunes().empty()) return std::nullopt;
    return reader_.Tunes().begin()->second.ControlData.MZStepSize;
  }

 private:
  LoadedSpectrum Load(const PackedScan& scan) const {
    TslBL::RawSpectrum raw;
    reader_.Unpack(scan, raw);
    if (raw.counts.empty()) throw InputError(file_, PlaceOf(scan.number), "holds no points");
    const TslBL::Tune& tune = reader_.TuneOf(scan.number, raw);
    const std::string tuneText = "tune " + std::to_string(raw.info.TuneId) + ": ";
    LoadedSpectrum loaded{scan.number, raw.info.TimeStamp / 1000.0, nullptr};
    try {
      loaded.spectrum = FromCounts(tune, raw);
    } catch (const std::exception& e) {
      throw InputError(file_, PlaceOf(scan.number), tuneText + e.what());
    }
    if (!Ascends(loaded.spectrum->xAxis))
      throw InputError(file_, PlaceOf(scan.number), tuneText + "its calibration gives no ascending m/z");
    return loaded;
  }

  std::string file_;
  RunReader reader_;
  bool all_;
};

class ForeignSpectra final : public SpectrumSource {
 public:
  ForeignSpectra(const std::string& file, const ScanFilter& filter)
      : file_(file), scans_(OpenScans(file)), all_(filter.WantsAll()) {
    scans_->SetFilter(filter);
  }

  std::function<LoadedSpectrum()> Next() override {
    const auto scan = std::make_shared<Scan>();
    if (!scans_->Next(*scan)) return {};
    return [this, scan] { return Load(*scan); };
  }
  std::optional<std::uint64_t> Count() const override { return all_ ? scans_->Count() : std::nullopt; }
  std::string Format() const override { return scans_->Format(); }
  std::vector<std::string> Warnings() const override { return scans_->Warnings(); }
  std::vector<std::string> Notes() const override { return scans_->Notes(); }

 private:
  LoadedSpectrum Load(const Scan& scan) const {
    Check(scan);
    TslBL::RawSpectrum raw;
    raw.info.Id = scan.number;
    raw.info.TimeStamp =
        TslCommon::Truncate<std::uint32_t>(std::isnan(scan.rtSeconds) ? 0.0 : scan.rtSeconds * 1000.0 + 0.5);
    for (const double amplitude : scan.amplitude) raw.info.TIC += amplitude;
    raw.counts = scan.amplitude;
    const double step = scan.mz.size() > 1 ? scan.mz[1] - scan.mz[0] : 0.0;
    LoadedSpectrum loaded{scan.number, scan.rtSeconds, nullptr};
    loaded.spectrum.reset(TslBL::CreateSpectrum(raw, {}, {}, scan.mz.front(), step, scan.mz));
    return loaded;
  }

  void Check(const Scan& scan) const {
    if (scan.mz.empty()) throw InputError(file_, PlaceOf(scan.number), "holds no points");
    if (scan.representation == Scan::Centroid)
      throw InputError(file_, PlaceOf(scan.number), "holds centroid data; peak detection needs a profile");
  }

  std::string file_;
  std::unique_ptr<ScanSource> scans_;
  bool all_;
};

class DemonstrationSpectra final : public SpectrumSource {
 public:
  explicit DemonstrationSpectra(const ScanFilter& filter) : filter_(filter) {}

  std::function<LoadedSpectrum()> Next() override {
    while (next_ < simulator_.Scans()) {
      const std::uint32_t index = next_++;
      Scan header;
      header.number = index + 1;
      header.rtSeconds = simulator_.TimeStamp(index) / 1000.0;
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
    return {index + 1, raw.info.TimeStamp / 1000.0, FromCounts(simulator_.Tune(), raw)};
  }

  ScanFilter filter_;
  Simulator simulator_;
  std::uint32_t next_ = 0;
};

}  // namespace

std::unique_ptr<SpectrumSource> OpenSpectra(const std::string& input, const ScanFilter& filter) {
  const bool isRun = input.empty() || IsDatabase(input);
  if (isRun && filter.columns.IsGiven()) ScanSource::RefuseColumns("a run");
  if (input.empty()) return std::make_unique<DemonstrationSpectra>(filter);
  if (isRun) return std::make_unique<RunSpectra>(input, filter);
  return std::make_unique<ForeignSpectra>(input, filter);
}

}  // namespace TslTool
