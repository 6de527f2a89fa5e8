#pragma once
// What a tune is called, and when it was saved.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API TuneInfo : Record<TuneInfo> {
  std::wstring Name;
  std::wstring Comment;
  std::int64_t LastSave = 0;  // Unix seconds
};
TSLBL_API void Describe(Archive& ar, TuneInfo& info);

}  // namespace TslBL
