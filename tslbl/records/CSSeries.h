#pragma once
// The key of a charge-state series: peaks of one molecule at several charges.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API CSSeries : SerialRecord<CSSeries> {
  enum Types : std::uint32_t { None = 0, Resolved = 1, Unresolved = 2 };

  CSSeries() = default;
  CSSeries(Types type, std::uint32_t id) : Type(type), Id(id) {}

  Types Type = None;
  std::uint32_t Id = 0;  // number within its type, from 1
};

TSLBL_API void Describe(Archive& ar, CSSeries& series);

}  // namespace TslBL
