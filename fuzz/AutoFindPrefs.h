#pragma once
// Peak list preferences to and from their stored forms, for the fuzz targets.

#include <fuzz/Input.h>
#include <tslbl/tune/PLAutoFindPrefs.h>
#include <sstream>
#include <string>
#include <string_view>

namespace fuzz {

using TslBL::PLAutoFindPrefs;

inline std::string BytesOf(const PLAutoFindPrefs& prefs) {
  std::ostringstream out(std::ios::binary);
  TslCommon::BinaryWriter writer(out);
  writer << prefs;
  return out.str();
}

inline bool ReadBytes(std::string_view bytes, PLAutoFindPrefs& prefs) {
  std::istringstream in(std::string(bytes), std::ios::binary);
  TslCommon::BinaryReader reader(in);
  return Accepts([&] { reader >> prefs; });
}

inline void RequirePrefsStay(const PLAutoFindPrefs& prefs) {
  PLAutoFindPrefs again;
  Require(ReadBytes(BytesOf(prefs), again), "written preferences are read");
  Require(BytesOf(again) == BytesOf(prefs), "preferences that were read are written the same");
}

inline void CheckPrefsBytes(std::string_view bytes) {
  PLAutoFindPrefs prefs;
  const std::string before = BytesOf(prefs);
  if (!ReadBytes(bytes, prefs))
    return Require(BytesOf(prefs) == before, "refused preferences stay as they were");
  RequirePrefsStay(prefs);
}

inline void CheckPrefsDocument(const std::wstring& xml) {
  TslCommon::XMLParser parser;
  if (!parser.LoadText(xml)) return;
  PLAutoFindPrefs prefs;
  prefs.WPeakTableSelection(7, true);
  Accepts([&] { parser >> prefs; });
  RequirePrefsStay(prefs);
  std::int32_t average = 0;
  bool save = false;
  if (prefs.QPeakTableSelection(average, save)) return;
  Require(average == 7 && save, "every spectrum keeps the choice for averages");
}

}  // namespace fuzz
