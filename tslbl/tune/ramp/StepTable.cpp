#include <tslbl/tune/ramp/StepTable.h>

#include <tslbl/closed/common/Truncate.h>
#include <algorithm>
#include <iterator>

namespace TslBL {

ByLens StepTableFct::ExtractByLens(TuneField::Id field) const {
  ByLens lens{.Field = field, .Values = {}};
  for (const Q1CalPt& row : table_)
    if (const auto entry = row.Fields.find(field); entry != row.Fields.end())
      lens.Values.insert({row.MZ, entry->second});
  return lens;
}

void StepTableFct::Update(const ByLens& lens) {
  for (Q1CalPt& row : table_) row.Fields.erase(lens.Field);
  std::vector<Q1CalPt> added;
  for (const auto& [mz, value] : lens.Values) {
    const auto row = std::ranges::find_if(table_, [whole = Truncate<std::int32_t>(mz)](const Q1CalPt& point) {
      return Truncate<std::int32_t>(point.MZ) == whole;
    });
    Q1CalPt& target = row != table_.end() ? *row : added.emplace_back(mz, L"");
    target.Fields[lens.Field] = value;
  }
  if (added.empty()) return;
  std::ranges::move(added, std::back_inserter(table_));
  std::ranges::stable_sort(table_, {}, &Q1CalPt::MZ);
}

void StepTableFct::KeepNominalMassesFor(const std::set<std::int32_t>& masses, TuneField::Id field) {
  ByLensFct lens(ExtractByLens(field));
  lens.KeepNominalMasses(masses);
  Update(lens.QByLens());
}

}  // namespace TslBL
