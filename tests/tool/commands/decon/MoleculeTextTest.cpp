#include <tool/commands/decon/MoleculeText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/frame/UsageError.h>

namespace tests {
namespace {

TslBL::AvgMoleculeInfo MoleculeOf(const std::string& text) {
  TslBL::ResolvedParams params;
  TslTool::SetMolecule("--molecule", text, params);
  return params.GetAvgMoleculeInfo();
}

TEST(MoleculeText, NamesTheMoleculesOfTheLibrary) {
  using Info = TslBL::AvgMoleculeInfo;
  EXPECT_EQ(MoleculeOf("averagine"), Info::GetStandardAvgMolecule(Info::Averagine));
  EXPECT_EQ(MoleculeOf("dnagine"), Info::GetStandardAvgMolecule(Info::DNAgine));
  EXPECT_EQ(MoleculeOf("rnagine"), Info::GetStandardAvgMolecule(Info::RNAgine));
}

TEST(MoleculeText, MayBeAFormula) { EXPECT_EQ(MoleculeOf("C6 H10 O5").Formula, L"C6 H10 O5"); }

TEST(MoleculeText, NamesWhatIsNoFormula) {
  TslBL::ResolvedParams params;
  try {
    TslTool::SetMolecule("--molecule", "C6 Zq2", params);
    FAIL();
  } catch (const TslTool::UsageError& e) {
    EXPECT_THAT(e.what(), testing::StartsWith("--molecule: "));
    EXPECT_THAT(e.what(), testing::HasSubstr("C6 Zq2"));
  }
}

}  // namespace
}  // namespace tests
