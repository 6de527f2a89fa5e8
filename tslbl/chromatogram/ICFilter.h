#pragma once
// A stretch of a run, of those spectra alone that certain tunes acquired. Whoever builds a chromatogram
// interprets it.
//
// Element "ICFilter" with an element "ICRange" and then "TuneIds", the ids between blanks.

#include <tslbl/Export.h>
#include <tslbl/chromatogram/ICRange.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <utility>
#include <vector>

namespace TslBL {

struct TSLBL_API ICFilter : Record<ICFilter> {
  ICFilter() = default;
  ICFilter(const ICRange& range, std::vector<std::uint32_t> tuneIds)
      : Range(range), TuneIds(std::move(tuneIds)) {}

  ICRange Range;
  std::vector<std::uint32_t> TuneIds;
};

TSLBL_API void Describe(Archive& ar, ICFilter& filter);

}  // namespace TslBL
