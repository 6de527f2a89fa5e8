#pragma once
// A stretch of a run: the whole of it, or from one time or spectrum to another.
//
// Element "ICRange" with the attribute "Type", and "Start" and "End" unless the range is full.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct TSLBL_API ICRange : Record<ICRange> {
  enum Types : std::uint32_t { Full = 0, Time = 1, SpecId = 2 };

  ICRange() = default;
  ICRange(Types type, std::uint32_t start, std::uint32_t end) : Type(type), Start(start), End(end) {}

  Types Type = Full;
  std::uint32_t Start = 0;  // a time in milliseconds or the id of a spectrum
  std::uint32_t End = 0;    // likewise

  // "Full", "Time", and "SpecId" for any other number.
  static std::wstring CvtType(Types type);
  // By "Full" and "Time", whatever their case; SpecId for any other text.
  static Types CvtType(const std::wstring& text);
};

TSLBL_API void Describe(Archive& ar, ICRange& range);

// Reads the next range of an open list and appends it; defaults stand for what it lacks.
TSLBL_API void LoadICRange(XMLParser& parser, std::vector<ICRange>& ranges);

}  // namespace TslBL
