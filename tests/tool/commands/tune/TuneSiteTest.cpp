// Files of a site lie beside libtslbl.so, wherever the tool itself lies.
//
// Tests: Tune.cpp, tool/frame/Log.cpp.

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

}  // namespace
}  // namespace tests
