#pragma once
// An average molecule: what a mass consists of where its formula is not known. Element "CustomAvgMole".

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API AvgMoleculeInfo : Record<AvgMoleculeInfo> {
  enum AvgMolecule : std::uint32_t { Averagine = 0, DNAgine = 1, RNAgine = 2, Custom = 3 };

  // Any value without a molecule of its own, Custom too, gives averagine.
  static AvgMoleculeInfo GetStandardAvgMolecule(AvgMolecule molecule);

  AvgMoleculeInfo() = default;
  AvgMoleculeInfo(const std::wstring& name, const std::wstring& formula) : Name(name), Formula(formula) {}

  std::wstring Name;
  std::wstring Formula;  // elements with their numbers, such as "C117 H184 N32 O35 S1"
};

TSLBL_API void Describe(Archive& ar, AvgMoleculeInfo& molecule);

}  // namespace TslBL
