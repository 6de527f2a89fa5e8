#include <tool/simulate/ProteinText.h>

#include <gtest/gtest.h>

#include <tool/frame/UsageErrorOf.h>

namespace tests {
namespace {

using TslTool::Compound;
using TslTool::ParseProtein;

struct Ends {
  std::uint32_t first, last;
  bool operator==(const Ends&) const = default;
};

Ends ChargesOf(const std::string& text) {
  const Compound protein = ParseProtein(text, {});
  return {protein.charges.front().charge, protein.charges.back().charge};
}

TEST(ProteinText, HasNameMassChargesAndCounts) {
  const Compound protein = ParseProtein("myoglobin=16951.5:10-20:250", {});
  EXPECT_EQ(protein.name, "myoglobin");
  EXPECT_EQ(protein.averageMass, 16951.5);
  EXPECT_EQ(protein.monoMass, 0.0);
  EXPECT_EQ(protein.formula, "");
  EXPECT_EQ(protein.charges.size(), 11U);
  EXPECT_EQ(protein.height, 250.0);
  EXPECT_EQ(protein.elutionWidth, 0.0);
}

TEST(ProteinText, ChargesAndCountsMayBeLeftOut) {
  EXPECT_EQ(ParseProtein("a=8000", {}).height, 3000.0);
  EXPECT_EQ(ParseProtein("a=8000::10", {}).height, 10.0);
  EXPECT_EQ(ParseProtein("a=8000:9", {}).height, 3000.0);
}

TEST(ProteinText, ANameMayHaveSignsOfItsOwn) {
  EXPECT_EQ(ParseProtein("a=b, c-d:e=8000", {}).name, "a=b, c-d:e");
  EXPECT_EQ(ParseProtein("\u03b2-lactoglobulin=18277", {}).name, "\u03b2-lactoglobulin");
}

// 16951.5 Da: m/z 1131.1 at charge 15, 1060.5 at 16, 707.3 at 24, 679.1 at 25.
TEST(ProteinText, UsualChargesAreAtMz700To1500AsFarAsTheyAreScanned) {
  EXPECT_EQ(ChargesOf("m=16951.5"), (Ends{16, 24}));
  EXPECT_EQ(ChargesOf("m=16951.5:3-40"), (Ends{3, 40})) << "others need not all be scanned";
  EXPECT_EQ(ChargesOf("m=500"), (Ends{1, 1}));
  const Compound wide = ParseProtein("m=16951.5", {.mzHigh = 3000.0});
  EXPECT_EQ(wide.charges.front().charge, 12U);
}

TEST(ProteinText, TheLimitsThemselvesAreTaken) {
  for (const char* text : {"a=500", "a=2e6", "a=8000:80", "a=8000:8:1e9", "a=8000:8:1e-3"})
    EXPECT_EQ(UsageErrorOf([&text = text] { ParseProtein(text, {}); }), "") << text;
}

TEST(ProteinText, ErrorsNameTextElementAndValue) {
  const std::pair<const char*, const char*> cases[] = {
      {"myoglobin", "NAME=MASS is expected, as in myoglobin=16951.5"},
      {"=8000", "NAME is empty"},
      {"a\tb=8000", "NAME has a character that a table cannot show"},
      {"a=8000:8:5:1", "behind NAME= come MASS:CHARGES:COUNTS and no more"},
      {"a=", "MASS: \"\" is not a number"},
      {"a=8k", "MASS: \"8k\" is not a number"},
      {"a=0", "MASS: 0 is not from 500 to 2000000 Da"},
      {"a=-8000", "MASS: -8000 is not from 500 to 2000000 Da"},
      {"a=2000001", "MASS: 2000001 is not from 500 to 2000000 Da"},
      {"a=8000:20-10", "CHARGES: \"20-10\" ends before it begins"},
      {"a=8000:x-10", "CHARGES: \"x\" is not a whole number from 0 to 4294967295"},
      {"a=8000:0-10", "CHARGES: 0 is no charge"},
      {"a=8000:8-81", "CHARGES: 81 is more than 80, one for each 100 Da"},
      {"a=8000:8-4294967295", "CHARGES: 4294967295 is more than 80, one for each 100 Da"},
      {"a=8000:1-7", "CHARGES: none of 1-7 has its m/z in the range that is scanned, 100 to 1100"},
      {"a=8000:80:0", "COUNTS: 0 is not above 0 and up to 1000000000"},
      {"a=8000:80:2e9", "COUNTS: 2000000000 is not above 0 and up to 1000000000"},
      {"a=8000:80:many", "COUNTS: \"many\" is not a number"},
  };
  for (const auto& [text, reason] : cases)
    EXPECT_EQ(UsageErrorOf([&text = text] { ParseProtein(text, {}); }),
              "--protein: \"" + std::string(text) + "\": " + reason);
}

TEST(ProteinText, UsualChargesThatAreNotScannedAreAnError) {
  EXPECT_EQ(UsageErrorOf([] { ParseProtein("m=16951.5", {.mzLow = 2000.0, .mzHigh = 3000.0}); }),
            "--protein: \"m=16951.5\": CHARGES: none of the usual 12-24 has its m/z in the range that is "
            "scanned, 2000 to 3000");
}

}  // namespace
}  // namespace tests
