// The syringe of a tune.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/tune/SyringeList.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>

namespace TslBL {

using ErrTypes = DevTuneRules::ErrTypes;

std::wstring DevTuneRules::QCustomSyringeManufacturer() { return L"CUSTOM - User Entered"; }

ErrTypes DevTuneRules::WSyringeModel(const std::wstring& manufacturer, const std::wstring& model) {
  if (manufacturer == QSyringeManufacturer() && model == QSyringeModel()) return NoError;
  const SyringeList list = SyringeList::Load();
  const auto make = std::ranges::find(list.Manufacturers, manufacturer, &SyringeManufacturer::Name);
  if (make == list.Manufacturers.end()) return Fail(kInvalidSyringeModel);
  const auto found = std::ranges::find(make->Models, model, &SyringeModel::Name);
  if (found == make->Models.end()) return Fail(kInvalidSyringeModel);
  SyringeData.Manufacturer = make->Name;
  SyringeData.Model = *found;
  Modified = true;
  return NoError;
}

ErrTypes DevTuneRules::WSyringeCustom(double diameter) {
  if (QSyringeManufacturer() == QCustomSyringeManufacturer() && diameter == QSyringeDiameter())
    return NoError;
  Syringe changed = SyringeData;
  changed.Manufacturer = QCustomSyringeManufacturer();
  changed.Model.Name.clear();
  changed.Model.Diameter = diameter;
  return WriteSyringe(changed);
}

ErrTypes DevTuneRules::WSyringeFlow(std::uint32_t flow) {
  if (flow == QSyringeFlow()) return NoError;
  Syringe changed = SyringeData;
  changed.FlowRate = flow;
  return WriteSyringe(changed);
}

ErrTypes DevTuneRules::WriteSyringe(const Syringe& syringe) {
  if (CheckSyringe(syringe) != NoError) return Error;
  SyringeData = syringe;
  Modified = true;
  return NoError;
}

}  // namespace TslBL
