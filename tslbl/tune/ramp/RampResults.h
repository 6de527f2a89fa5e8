#pragma once
// Which step of a ramp is best.
//
// Every step has yielded a peak in each m/z range of interest. Amplitude and resolution decide, as
// RampAlgorithmParams says: the highest amplitude or resolution, or the highest of one among the steps that
// come within Percent of the best of the other. Of steps that are equal in both, the first is taken.

#include <tslbl/Export.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/tune/ramp/RampAlgorithmParams.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// A peak of a spectrum on its way through the results of a ramp. The three numbers are the caller's.
struct TSLBL_API SpectrumBasePeak {
  std::uint32_t SpecId = 0;
  std::uint32_t TuneId = 0;
  std::uint32_t TimeStamp = 0;
  MZPeak Peak;
};

// The same with all peaks of the spectrum.
struct TSLBL_API SpectrumPeakTable {
  std::uint32_t SpecId = 0;
  std::uint32_t TuneId = 0;
  std::uint32_t TimeStamp = 0;
  std::vector<MZPeak> Peaks;
};

// By m/z ranges, and within each by the steps of the ramp, of which there are as many in every range. Both
// functions throw std::invalid_argument for ranges of different length; a NaN counts as less than any number.

// The best step for each range, an index from 0. A Type that is none counts as 3. Throws
// std::invalid_argument for ranges without steps.
TSLBL_API std::vector<std::uint32_t> RampCalcMZRangeBestIndexes(
    const std::vector<std::vector<SpectrumBasePeak>>& peaks, const RampAlgorithmParams& params);

// One best step for all ranges: the best in their sum, among the steps whose worst range is within Percent of
// that range's best. A Type that is none counts as 0. Throws std::invalid_argument without ranges, and
// without steps.
TSLBL_API std::uint32_t RampCalcOverallBestIndex(const std::vector<std::vector<SpectrumBasePeak>>& peaks,
                                                 const RampAlgorithmParams& params);

}  // namespace TslBL
