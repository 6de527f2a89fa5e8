#include <tool/commands/chrom/ScanPoints.h>

#include <tool/io/MzMLFile.h>
#include <tool/io/SkipCounts.h>
#include <algorithm>
#include <numeric>

namespace TslTool {
namespace {

using Values = std::span<const double>;

void TakeValues(const std::vector<ExtractedRange>& ranges, Values mz, Values amplitude, ScanPoint& point) {
  point.ranges.reserve(ranges.size());
  for (const ExtractedRange& range : ranges) point.ranges.push_back(ValueOf(range, mz, amplitude));
  if (mz.empty()) return;
  point.tic = std::reduce(amplitude.begin(), amplitude.end());
  point.basePeak = std::max(*std::ranges::max_element(amplitude), 0.0);
  point.mzFrom = mz.front();
  point.mzTo = mz.back();
}

// The spectra of the instrument's own runs.
class RunPoints final : public PointSource {
 public:
  RunPoints(const std::string& input, const SpectrumChoice& choice, std::vector<ExtractedRange> ranges)
      : spectra_(OpenSpectra(input, choice)), ranges_(std::move(ranges)) {}

  std::function<ScanPoint()> Next() override {
    const std::function<LoadedSpectrum()> load = spectra_->Next();
    if (!load) return {};
    return [this, load] {
      const LoadedSpectrum loaded = load();
      ScanPoint point{loaded.scan, loaded.rtSeconds, loaded.msLevel, loaded.polarity,
                      loaded.spectrum->tuneId};
      point.countAmpl = loaded.countAmpl;
      TakeValues(ranges_, loaded.spectrum->xAxis, loaded.spectrum->yAxis, point);
      return point;
    };
  }
  std::optional<std::uint64_t> Count() const override { return spectra_->Count(); }
  std::string Skipped() const override { return spectra_->Skipped(); }
  std::vector<std::string> Warnings() const override { return spectra_->Warnings(); }

 private:
  std::unique_ptr<SpectrumSource> spectra_;
  std::vector<ExtractedRange> ranges_;
};

class MzMLPoints final : public PointSource {
 public:
  MzMLPoints(ForeignFile file, const SpectrumChoice& choice, std::vector<ExtractedRange> ranges)
      : skipped_(file.source.File(), choice.strict),
        scans_(std::move(file.source), std::move(file.warnings)),
        isAll_(choice.filter.WantsAll()),
        ranges_(std::move(ranges)) {
    scans_.SetFilter(choice.filter);
  }

  std::function<ScanPoint()> Next() override {
    const auto scan = std::make_shared<Scan>();
    while (scans_.Next(*scan)) {
      if (scan->defect) {
        skipped_.Skip(*scan->defect);
        continue;
      }
      skipped_.CountTaken();
      return [this, scan] {
        ScanPoint point{scan->number, scan->rtSeconds, scan->msLevel, scan->polarity};
        point.function = scan->function;
        TakeValues(ranges_, scan->mz, scan->amplitude, point);
        return point;
      };
    }
    return {};
  }
  std::optional<std::uint64_t> Count() const override { return isAll_ ? scans_.Count() : std::nullopt; }
  std::string Skipped() const override { return skipped_.Text(); }
  Chromatograms PassedOver() const override { return scans_.PassedOver(); }
  std::vector<std::string> Warnings() const override { return scans_.Warnings(); }

 private:
  SkipCounts skipped_;
  MzMLFile scans_;
  bool isAll_;
  std::vector<ExtractedRange> ranges_;
};

}  // namespace

RangeValue ValueOf(const ExtractedRange& range, Values mz, Values amplitude) {
  const auto first = std::ranges::lower_bound(mz, range.from);
  const auto end = std::upper_bound(first, mz.end(), range.to);
  const auto values =
      amplitude.subspan(static_cast<std::size_t>(first - mz.begin()), static_cast<std::size_t>(end - first));
  return {std::accumulate(values.begin(), values.end(), 0.0), values.size()};
}

std::unique_ptr<PointSource> OpenRunPoints(const std::string& input, const SpectrumChoice& choice,
                                           const std::vector<ExtractedRange>& ranges) {
  return std::make_unique<RunPoints>(input, choice, ranges);
}

std::unique_ptr<PointSource> OpenMzMLPoints(ForeignFile file, const SpectrumChoice& choice,
                                            const std::vector<ExtractedRange>& ranges) {
  return std::make_unique<MzMLPoints>(std::move(file), choice, ranges);
}

}  // namespace TslTool
