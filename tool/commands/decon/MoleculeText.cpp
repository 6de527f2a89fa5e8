#include <tool/commands/decon/MoleculeText.h>

#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/engines/Formula.h>
#include <exception>

namespace TslTool {
namespace {

using TslBL::AvgMoleculeInfo;

struct NamedMolecule {
  const char* name;
  AvgMoleculeInfo::AvgMolecule molecule;
};
constexpr NamedMolecule kMolecules[] = {{"averagine", AvgMoleculeInfo::Averagine},
                                        {"dnagine", AvgMoleculeInfo::DNAgine},
                                        {"rnagine", AvgMoleculeInfo::RNAgine}};

}  // namespace

void SetMolecule(const std::string& option, const std::string& text, TslBL::ResolvedParams& params) {
  for (const auto& [name, molecule] : kMolecules) {
    if (text != name) continue;
    params.AvgMolecule = molecule;
    return;
  }
  try {
    TslMath::ParseFormula(text);
  } catch (const std::exception& e) {
    throw UsageError(option + ": " + e.what());
  }
  params.AvgMolecule = AvgMoleculeInfo::Custom;
  params.CustomAvgMole = {L"Custom", TslCommon::FromUtf8(text)};
}

}  // namespace TslTool
