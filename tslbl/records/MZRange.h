#pragma once
// A range of m/z: the whole of what the instrument scans, or a part of it.
//
// Element "MZRange" with the attribute "Type"; a partial range has the attributes "Start"
// and "End" too. A full range keeps its limits in memory and in binary, not in a document.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct TSLBL_API MZRange : Record<MZRange> {
  enum Types : std::uint32_t { Full = 0, Partial = 1 };

  MZRange() = default;
  MZRange(Types type, double start, double end) : Type(type), Start(start), End(end) {}

  Types Type = Full;
  double Start = 5.0;   // m/z
  double End = 3000.0;  // m/z

  // "Full" for Full and "Partial" for any other number.
  static std::wstring CvtType(Types type);
  // Full for "Full", whatever its case, and Partial for any other text.
  static Types CvtType(const std::wstring& text);
};

TSLBL_API void Describe(Archive& ar, MZRange& range);

// Reads the next range of an open list and appends it; defaults stand for what it lacks.
TSLBL_API void LoadMZRange(XMLParser& parser, std::vector<MZRange>& ranges);

}  // namespace TslBL
