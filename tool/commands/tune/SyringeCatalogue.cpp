#include <tool/commands/tune/SyringeCatalogue.h>

#include <tool/commands/tune/FieldText.h>
#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/SyringeList.h>
#include <algorithm>

namespace TslTool {

std::string KnownSyringe::Name() const { return TslCommon::ToUtf8(manufacturer + L"/" + model.Name); }

std::vector<KnownSyringe> KnownSyringes() {
  std::vector<KnownSyringe> known;
  for (const TslBL::SyringeManufacturer& make : TslBL::SyringeList::Load().Manufacturers)
    for (const TslBL::SyringeModel& model : make.Models) known.push_back({make.Name, model});
  return known;
}

std::optional<KnownSyringe> FindSyringe(const std::string& name) {
  const std::vector<KnownSyringe> known = KnownSyringes();
  const auto isExact = [&](const KnownSyringe& syringe) { return syringe.Name() == name; };
  const auto isLike = [&](const KnownSyringe& syringe) { return SameText(syringe.Name(), name); };
  auto found = std::ranges::find_if(known, isExact);
  if (found == known.end()) found = std::ranges::find_if(known, isLike);
  if (found == known.end()) return std::nullopt;
  return *found;
}

std::string SyringeCatalogueFile() {
  return TslCommon::ToUtf8(TslCommon::ModuleFolder(TslCommon::ModuleHandle()) + L"SyringeList.xml");
}

}  // namespace TslTool
