#pragma once
// What each scan of an input gives to the chromatograms.

#include <tool/commands/chrom/CurveChoice.h>
#include <tool/io/OpenScans.h>
#include <tool/io/SpectrumSource.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace TslTool {

// What lies in one range of a scan.
struct RangeValue {
  double sum = 0.0;
  std::size_t points = 0;

  double Mean() const { return points == 0 ? 0.0 : sum / static_cast<double>(points); }
};

// The amplitudes from `range.from` to `range.to`, both included; `mz` ascends. Binary search for the ends.
RangeValue ValueOf(const ExtractedRange& range, std::span<const double> mz,
                   std::span<const double> amplitude);

struct ScanPoint {
  std::uint32_t scan = 0;
  double rtSeconds = 0.0;      // NaN: the file gives no time
  int msLevel = 0;             // 0: the file gives no level
  int polarity = 0;            // +1 or -1; 0: the file does not tell
  std::uint32_t tune = 0;      // that acquired it; 0 where there are none
  std::uint32_t function = 0;  // as of Scan
  double tic = 0.0;            // sum of all amplitudes
  double basePeak = 0.0;       // the largest of them, 0 if there is none
  double mzFrom = 0.0;         // of its points; both 0 if there is none
  double mzTo = 0.0;
  double countAmpl = 0.0;  // the amplitude of one count where the instrument counts; 0: not known
  std::vector<RangeValue> ranges = {};
};

// The scans of an input one after the other.
class PointSource {
 public:
  virtual ~PointSource() = default;

  // The next scan, read but not yet unpacked: that is done by calling what is returned, once, on any thread,
  // while the source is there. Empty when there is none left. Both throw InputError.
  virtual std::function<ScanPoint()> Next() = 0;
  // As of SpectrumSource.
  virtual std::optional<std::uint64_t> Count() const = 0;
  virtual std::string Skipped() const { return ""; }
  virtual Chromatograms PassedOver() const { return {}; }
  virtual std::vector<std::string> Warnings() const { return {}; }
};

// Of a run, or of the demonstration run if `input` is empty.
std::unique_ptr<PointSource> OpenRunPoints(const std::string& input, const SpectrumChoice& choice,
                                           const std::vector<ExtractedRange>& ranges);

// Of an mzML file, profiles and centroid spectra alike. Takes the file over.
std::unique_ptr<PointSource> OpenMzMLPoints(ForeignFile file, const SpectrumChoice& choice,
                                            const std::vector<ExtractedRange>& ranges);

}  // namespace TslTool
