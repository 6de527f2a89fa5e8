#pragma once
// The sum of the scans of a run.

#include <tool/io/RunFile.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace TslTool {

// The counts of scans that one tune acquired, exactly: what one scan would have counted that dwells as long.
struct SummedScans {
  TslBL::RawSpectrum raw;  // header of the first of them; the TIC is of all
  std::uint32_t scans = 0;
};

class RunSum {
 public:
  // Scans of one tune and length are added count by count. Memory does not grow with their number.
  void Add(const TslBL::RawSpectrum& raw);

  // By tune and number of points.
  using Parts = std::map<std::pair<std::uint32_t, std::size_t>, SummedScans>;
  const Parts& All() const { return parts_; }

  // The average count rate; startMDAC is the exact DAC value of the first point. Several parts are brought to
  // one axis, as AverageMultiStateSpectra does. There must be a scan. Throws InputError naming the tune whose
  // counts have no rate or no axis.
  std::unique_ptr<TslBL::Spectrum> Average(const std::string& file, const RunReader& run) const;

 private:
  Parts parts_;
};

// The tune of scans that were summed: it counts for as many scans a spectrum. Throws std::runtime_error for
// more than a tune can tell.
TslBL::Tune TuneOfSum(const TslBL::Tune& tune, std::uint32_t scans);

}  // namespace TslTool
