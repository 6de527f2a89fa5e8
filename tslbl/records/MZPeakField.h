#pragma once
// Names one of the values of an MZPeak that are read, written and plotted one by one.
//
// Element "MZPkFld" with the text form as attribute "Type".

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API MZPeakField : Record<MZPeakField> {
  enum Types : std::uint32_t { Ampl = 0, Mass = 1, Res = 2, Width = 3 };

  MZPeakField() = default;
  MZPeakField(Types type) : Type(type) {}

  Types Type = Ampl;

  // "Ampl", "Mass" and "Res"; "Width" for any other number.
  static std::wstring CvtType(Types type);
  // Ignores case; any other text is Width.
  static Types CvtType(const std::wstring& text);
  // The label of the field in front of a user, such as "Resolution"; that of Width for any
  // other number.
  std::wstring FieldToString() const;

  friend bool operator<(const MZPeakField& a, const MZPeakField& b) { return a.Type < b.Type; }
};

TSLBL_API void Describe(Archive& ar, MZPeakField& field);

}  // namespace TslBL
