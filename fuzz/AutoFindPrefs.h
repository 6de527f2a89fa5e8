#pragma once
// Peak list preferences to and from their stored forms, for the fuzz targets.

#include <fuzz/Records.h>
#include <tslbl/tune/PLAutoFindPrefs.h>
#include <string>
#include <string_view>

namespace fuzz {

using TslBL::PLAutoFindPrefs;

inline void RequirePrefsStay(const PLAutoFindPrefs& prefs) {
  PLAutoFindPrefs again;
  Require(AcceptsBytes(ToBytes(prefs), again), "written preferences are read");
  Require(ToBytes(again) == ToBytes(prefs), "preferences that were read are written the same");
}

inline void CheckPrefsBytes(std::string_view bytes) {
  PLAutoFindPrefs prefs;
  const std::string before = ToBytes(prefs);
  if (!AcceptsBytes(bytes, prefs))
    return Require(ToBytes(prefs) == before, "refused preferences stay as they were");
  RequirePrefsStay(prefs);
}

inline void CheckPrefsDocument(const std::wstring& xml) {
  PLAutoFindPrefs prefs;
  prefs.WPeakTableSelection(7, true);
  if (!AcceptsXml(xml, prefs)) return;
  RequirePrefsStay(prefs);
  std::int32_t average = 0;
  bool save = false;
  if (prefs.QPeakTableSelection(average, save)) return;
  Require(average == 7 && save, "every spectrum keeps the choice for averages");
}

}  // namespace fuzz
