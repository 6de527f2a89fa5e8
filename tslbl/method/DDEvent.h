#pragma once
// Where a data-dependent action began or ended in a run: when, at which spectrum, for which m/z. Events
// are detected by the control of the instrument; the library stores them and writes them into
// the document of results.

#include <tslbl/Export.h>
#include <tslbl/method/DDInfo.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace TslBL {

struct TSLBL_API DDEvent : SerialRecord<DDEvent> {
  enum Boundaries : std::uint32_t { Start = 0, Stop = 1 };

  DDEvent() = default;
  DDEvent(Boundaries boundary, std::uint32_t timeStamp, std::uint32_t specId, std::vector<double> mzPeaks)
      : Boundary(boundary), TimeStamp(timeStamp), SpecId(specId), MZPeaks(std::move(mzPeaks)) {}

  Boundaries Boundary = Start;
  std::uint32_t TimeStamp = 0;
  std::uint32_t SpecId = 0;
  std::vector<double> MZPeaks;  // m/z that caused it

  // Any number but 0 is "Stop", and any text but "Start", whose case does not matter.
  static std::wstring CvtBoundary(Boundaries boundary);
  static Boundaries CvtBoundary(const std::wstring& text);
};
TSLBL_API void Describe(Archive& ar, DDEvent& event);

// One element "Event" with the attributes "Id", "Boundary", "Type", "TimeStamp" and "SpecId", and a child
// "MZPeaks": the m/z with six significant digits, a blank between two.
TSLBL_API void AddEvent(XMLBuilder& builder, std::uint32_t id, DDInfo::Types type, const DDEvent& event);

}  // namespace TslBL
