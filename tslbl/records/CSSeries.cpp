#include <tslbl/records/CSSeries.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kTypeRows[] = {
    {CSSeries::None, L"None"},
    {CSSeries::Resolved, L"Resolved"},
    {CSSeries::Unresolved, L"Unresolved"},
};

}  // namespace

void Describe(Archive& ar, CSSeries& series) {
  ar.Version(1, "Unknown CSSeries version.");
  ar.Enum(L"Type", series.Type, Codes{.rows = kTypeRows});
  ar(L"Id", series.Id);
}

}  // namespace TslBL
