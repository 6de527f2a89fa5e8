#pragma once
// Spectra for evaluation, one after the other, whatever they come from: a run of raw counts,
// a foreign profile, or the built-in demonstration.

#include <tool/io/Scan.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct LoadedSpectrum {
  std::uint32_t scan = 0;
  double rtSeconds = 0.0;  // NaN: the file gives no time
  std::unique_ptr<TslBL::Spectrum> spectrum;
  std::string id = {};  // the file's own name for it, UTF-8; empty if it has none
  // The amplitude of one count where the instrument counts; 0: not known.
  double countAmpl = 0.0;
  // The amplitudes before the chain ran, if they are kept.
  std::vector<double> measured = {};
  // The baseline that the chain took off; empty if it took none.
  std::vector<double> subtracted = {};
  // What was on the amplitudes while the chain ran.
  double lift = 0.0;
  int msLevel = 0;             // 0: the file gives no level
  int polarity = 0;            // +1 or -1; 0: the file does not tell
  std::uint32_t function = 0;  // as of Scan
  // It came as a list of peaks, which stand in the peak table already (PeakListSpectrum.h).
  bool isPeakList = false;

  // What was measured at a point, on the level of the spectrum as the chain left it.
  double MeasuredAt(std::size_t point) const {
    return subtracted.empty() ? measured[point] : measured[point] - subtracted[point];
  }
};

// Which spectra of an input are wanted, and what they are to be taken as.
struct SpectrumChoice {
  ScanFilter filter;
  // Unknown: as they are marked, unless their points say otherwise.
  Scan::Representation takenAs = Scan::Unknown;
  // What cannot be evaluated is an error and not skipped.
  bool strict = false;
  // Centroid data are handed out as lists of peaks, and not skipped.
  bool withPeakLists = false;
};

class SpectrumSource {
 public:
  virtual ~SpectrumSource() = default;

  // The next spectrum, read but not yet unpacked and put on its m/z axis: that is done by
  // calling what is returned, once, on any thread, while the source is there. Empty when
  // there is none left. Both throw InputError.
  virtual std::function<LoadedSpectrum()> Next() = 0;
  // How many spectra the source announces, if it does.
  virtual std::optional<std::uint64_t> Count() const = 0;
  virtual std::string Format() const = 0;
  // How the ids of its spectra are built, if it tells.
  virtual IdFormat Ids() const { return {}; }
  // Spacing of the points in m/z, where the instrument's tune gives it.
  virtual std::optional<double> MzStep() const { return std::nullopt; }
  // What was wanted and cannot be evaluated, as in "3 of 12 spectra skipped: 3 marked as centroid (first at
  // scan 2)"; empty if nothing was. Complete once Next has returned false.
  virtual std::string Skipped() const { return ""; }
  // Whether some of it was skipped as centroid data.
  virtual bool SkippedCentroids() const { return false; }
  // Whether points of no amplitude were left out of some, so that what lies beyond the ends of a spectrum is
  // 0.
  virtual bool LeavesOutZeros() const { return false; }
  // What stands in the file beside its spectra, complete likewise.
  virtual Chromatograms PassedOver() const { return {}; }
  // What was odd but readable, complete once Next has returned false.
  virtual std::vector<std::string> Warnings() const { return {}; }
  // What was taken for what, complete once all spectra are loaded; see ScanSource::Notes.
  virtual std::vector<std::string> Notes() const { return {}; }
};

// A run brings counts: they become count rates, and the tune's calibration gives the m/z
// axis. Everything else brings its own m/z axis; only profiles of two points or more are handed
// out. An empty `input` is the demonstration run. Throws InputError, and UsageError for a choice of
// columns where there are none.
std::unique_ptr<SpectrumSource> OpenSpectra(const std::string& input, const SpectrumChoice& choice);

}  // namespace TslTool
