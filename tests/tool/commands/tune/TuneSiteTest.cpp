// Files of a site lie beside libtslbl.so, wherever the tool itself lies.
//
// Tests: SyringeCatalogue.cpp, Tune.cpp, TuneSyringes.cpp, tool/frame/Log.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <filesystem>
#include <fstream>
#include <string>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using testing::HasSubstr;

// A folder with a link to the library and a default tune, "a.tune".
class TuneSite : public testing::Test {
 protected:
  TuneSite() {
    const std::filesystem::path library =
        TslCommon::ToUtf8(TslCommon::ModuleFileName(TslCommon::ModuleHandle()));
    EXPECT_THAT(library.filename().string(), HasSubstr("libtslbl.so"));
    std::filesystem::create_symlink(library, folder_.Folder() + "/" + library.filename().string());
    EXPECT_EQ(RunTool({"tune", "new", "--output", folder_.Folder() + "/a.tune"}).status, 0);
  }

  void Put(const std::string& file, const std::string& content) {
    std::ofstream(folder_.Folder() + "/" + file) << content;
  }
  // The tool with the library of this folder.
  Outcome Run(const std::string& arguments) {
    return RunShell("cd '" + folder_.Folder() + "' && LD_LIBRARY_PATH=$PWD \"$TSLBL\" " + arguments);
  }

 private:
  TempFile folder_{"keep", ""};
};

TEST_F(TuneSite, WithoutFilesHasTheBuiltInLimits) { EXPECT_EQ(Run("tune set a.tune CapExit=350").status, 0); }

TEST_F(TuneSite, LimitsOfTheSiteCount) {
  Put("overrides.txt", "22 -300 300 1");
  const Outcome outcome = Run("tune set a.tune CapExit=350");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Valid values are -300.00 to 300.00."));
}

TEST_F(TuneSite, ASettlingDelayThatTheLimitsRefuseIsNoSuccess) {
  Put("overrides.txt", "16 0 1000 1");
  Run("tune set a.tune MZRange=100-200 InitSettleDelay=auto");
  const Outcome outcome = Run("tune set a.tune InitSettleDelay=auto MZRange=5-3000");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(
      outcome.err,
      HasSubstr("a.tune: InitSettleDelay=auto: the tune needs 3795 us: Initial Settling Delay is out of "
                "range.  Valid values are 0.00 to 1000.00.\n"));
}

constexpr const char* kCatalogue =
    "<Manufacturers><Manufacturer Name=\"Hamilton\"><Models><Model Name=\"1725 1/4\" Diameter=\"2.3\"/>"
    "<Model Name=\"1750\" Diameter=\"3.26\"/></Models></Manufacturer>"
    "<Manufacturer Name=\"SGE\"><Models><Model Name=\"a\" Diameter=\"1\"/><Model Name=\"A\" "
    "Diameter=\"4.61\"/></Models></Manufacturer></Manufacturers>";

TEST_F(TuneSite, SyringesAreListed) {
  Put("SyringeList.xml", kCatalogue);
  const Outcome outcome = Run("tune syringes");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "Hamilton/1725 1/4\t2.3\nHamilton/1750\t3.26\nSGE/a\t1\nSGE/A\t4.61\n");
}

TEST_F(TuneSite, WithoutSyringesSaysWhereTheyAreLookedFor) {
  const Outcome outcome = Run("tune syringes");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("/SyringeList.xml: there is no such file, or no syringe can be read from it"));
}

TEST_F(TuneSite, SyringesAreSetInAnyCase) {
  Put("SyringeList.xml", kCatalogue);
  EXPECT_THAT(Run("tune set a.tune 'Model=hamilton/1725 1/4'").out,
              HasSubstr("Model: \"\" -> Hamilton/1725 1/4\nDiameter: 0 -> 2.3\n"));
  EXPECT_THAT(Run("tune set a.tune Model=SGE/A").out, HasSubstr("Diameter: 2.3 -> 4.61\n"))
      << "one that is spelt so goes before one that is not";
  EXPECT_THAT(Run("tune set a.tune Model=sge/b").err,
              HasSubstr("Model=sge/b: Invalid syringe model. 'tslbl tune syringes' lists them."));
}

}  // namespace
}  // namespace tests
