#pragma once
// Looking at what the library and the engines of charge state deconvolution say to each other.

#include <tslbl/Export.h>
#include <atomic>
#include <cstdint>

namespace TslBL {

// 0, unless an application sets it. While it is 1, every document of SetPrefs, AutoSeries, FindSeries and
// RecalcSeries is saved under the name "C:\CSD_Res..." or "C:\CSD_Unres...", such as
// "C:\CSD_ResAutoMz_In.xml", in the place of the one before; where the system has no drives, as files of that
// whole name in the working directory. A document that cannot be saved is told on std::wcout, and the run
// goes on. For the whole process; any thread may set it.
extern TSLBL_API std::atomic<std::uint8_t> csDebugFiles;

}  // namespace TslBL
