#pragma once
// Editing the groups of overlap peaks after a run: a user adds a peak to a group or takes peaks out of it,
// and the group is fitted anew, with its present peaks as the start and the fitting function of the
// parameters.
//
// Before a group is fitted anew its range is cleared, and with it, as ClearOverlapRange of
// spectrum/OverlappedCurve.h tells, all overlap peaks of data peaks left of it; if the fit then fails, the
// group is gone.
//
// False with a message in `error` if the fit failed; ComError passes, and std::logic_error where overlap
// peaks name data peaks that the spectrum has not.

#include <tslbl/Export.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

// Adds the data peak at an m/z to a group; where there is none, one is searched for and added to the peak
// table. A group without peaks, such as number 0, becomes a new group of this one peak. `group` receives the
// number that the group has now. On an overlap peak, its data peak is what is added.
//
// Where the row of the table was found by searching, overlap peaks of that data peak and those to its right
// are moved on by one data peak, as if the row were new, also if it was there already.
TSLBL_API bool OPDRefitGroupAdd(const OPDParams& params, Spectrum& spectrum, std::uint32_t& group, double mz,
                                std::wstring& error);

// Takes overlap peaks out of a group; opdIds, which ascend, are their overlap peak ids. Those that are not of
// the group count for nothing. `group` receives 0 if none is left, and otherwise keeps its value, though the
// number of the group may have changed.
TSLBL_API bool OPDRefitGroupRemove(const OPDParams& params, Spectrum& spectrum, std::uint32_t& group,
                                   const std::vector<std::uint32_t>& opdIds, std::wstring& error);

}  // namespace TslBL
