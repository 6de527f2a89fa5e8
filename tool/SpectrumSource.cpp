#include <tool/SpectrumSource.h>

#include <tool/Simulator.h>
#include <tool/io/InputError.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
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

  bool Next(LoadedSpectrum& loaded) override {
    if (!reader_.Next(number_, raw_)) return false;
    if (raw_.counts.empty()) throw InputError(file_, PlaceOf(number_), "holds no points");
    loaded.scan = number_;
    loaded.rtSeconds = raw_.info.TimeStamp / 1000.0;
    const TslBL::Tune& tune = reader_.TuneOf(number_, raw_);
    try {
      loaded.spectrum = FromCounts(tune, raw_);
    } catch (const std::exception& e) {
      throw InputError(file_, PlaceOf(number_), TuneText() + e.what());
    }
    if (!Ascends(loaded.spectrum->xAxis))
      throw InputError(file_, PlaceOf(number_), TuneText() + "its calibration gives no ascending m/z");
    return true;
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
  std::string TuneText() const { return "tune " + std::to_string(raw_.info.TuneId) + ": "; }

  std::string file_;
  RunReader reader_;
  bool all_;
  std::uint32_t number_ = 0;
  TslBL::RawSpectrum raw_;
};

class ForeignSpectra final : public SpectrumSource {
 public:
  ForeignSpectra(const std::string& file, const ScanFilter& filter)
      : file_(file), scans_(OpenScans(file)), all_(filter.WantsAll()) {
    scans_->SetFilter(filter);
  }

  bool Next(LoadedSpectrum& loaded) override {
    if (!scans_->Next(scan_)) return false;
    Check();
    loaded.scan = scan_.number;
    loaded.rtSeconds = scan_.rtSeconds;
    TslBL::RawSpectrum raw;
    raw.info.Id = scan_.number;
    raw.info.TimeStamp = TslCommon::Truncate<std::uint32_t>(
        std::isnan(scan_.rtSeconds) ? 0.0 : scan_.rtSeconds * 1000.0 + 0.5);
    for (const double amplitude : scan_.amplitude) raw.info.TIC += amplitude;
    raw.counts = scan_.amplitude;
    const double step = scan_.mz.size() > 1 ? scan_.mz[1] - scan_.mz[0] : 0.0;
    loaded.spectrum.reset(TslBL::CreateSpectrum(raw, {}, {}, scan_.mz.front(), step, scan_.mz));
    return true;
  }
  std::optional<std::uint64_t> Count() const override { return all_ ? scans_->Count() : std::nullopt; }
  std::string Format() const override { return scans_->Format(); }
  std::vector<std::string> Warnings() const override { return scans_->Warnings(); }

 private:
  void Check() const {
    if (scan_.mz.empty()) throw InputError(file_, PlaceOf(scan_.number), "holds no points");
    if (scan_.representation == Scan::Centroid)
      throw InputError(file_, PlaceOf(scan_.number), "holds centroid data; peak detection needs a profile");
  }

  std::string file_;
  std::unique_ptr<ScanSource> scans_;
  bool all_;
  Scan scan_;
};

class DemonstrationSpectra final : public SpectrumSource {
 public:
  explicit DemonstrationSpectra(const ScanFilter& filter) : filter_(filter) {}

  bool Next(LoadedSpectrum& loaded) override {
    while (next_ < simulator_.Scans()) {
      TslBL::RawSpectrum raw = simulator_.MakeScan(next_++);
      Scan header;
      header.number = next_;
      header.rtSeconds = raw.info.TimeStamp / 1000.0;
      if (!filter_.Wants(header)) continue;
      loaded.scan = header.number;
      loaded.rtSeconds = header.rtSeconds;
      loaded.spectrum = FromCounts(simulator_.Tune(), raw);
      return true;
    }
    return false;
  }
  std::optional<std::uint64_t> Count() const override {
    return filter_.WantsAll() ? std::optional<std::uint64_t>(simulator_.Scans()) : std::nullopt;
  }
  std::string Format() const override { return "built-in demonstration run"; }
  std::optional<double> MzStep() const override { return simulator_.Tune().ControlData.MZStepSize; }

 private:
  ScanFilter filter_;
  Simulator simulator_;
  std::uint32_t next_ = 0;
};

}  // namespace

std::unique_ptr<SpectrumSource> OpenSpectra(const std::string& input, const ScanFilter& filter) {
  if (input.empty()) return std::make_unique<DemonstrationSpectra>(filter);
  if (IsDatabase(input)) return std::make_unique<RunSpectra>(input, filter);
  return std::make_unique<ForeignSpectra>(input, filter);
}

}  // namespace TslTool
