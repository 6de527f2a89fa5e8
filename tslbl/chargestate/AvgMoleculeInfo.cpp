#include <tslbl/chargestate/AvgMoleculeInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

AvgMoleculeInfo AvgMoleculeInfo::GetStandardAvgMolecule(AvgMolecule molecule) {
  switch (molecule) {
    case DNAgine:
      return {L"DNA-gine", L"C39 H50 N15 O22 P3"};
    case RNAgine:
      // The number of P has always been written with a zero; engines and stored documents know it so.
      return {L"RNA-gine", L"C38 H48 N15 O26 P03"};
    default:
      return {L"Averagine", L"C117 H184 N32 O35 S1"};
  }
}

void Describe(Archive& ar, AvgMoleculeInfo& molecule) {
  ar.Version(1, "Unknown AvgMoleculeInfo version.");
  if (const auto element = ar.Element(L"CustomAvgMole")) {
    ar(L"Name", molecule.Name);
    ar(L"Formula", molecule.Formula);
  }
}

}  // namespace TslBL
