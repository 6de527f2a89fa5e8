#include <tslbl/chargestate/SaveDebugFile.h>

#include <gtest/gtest.h>

#include <chargestate/DebugFolder.h>

using namespace TslBL;
using namespace tests;

TEST(SaveDebugFile, DoesNothingUnlessTheFlagIs1) {
  EXPECT_EQ(csDebugFiles, 0);
  const DebugFolder folder;
  for (const std::uint8_t flag : {std::uint8_t{0}, std::uint8_t{2}, std::uint8_t{255}}) {
    csDebugFiles = flag;
    SaveDebugFile(L"Any", L"<a/>");
  }
  EXPECT_TRUE(folder.Files().empty());
  EXPECT_EQ(folder.Said(), L"");
}

TEST(SaveDebugFile, SavesADocumentUnderItsName) {
  const DebugFolder folder;
  SaveDebugFile(L"ResAutoMz_In", L"<a/>");
  SaveDebugFile(L"ResAutoMz_In", L"<b c='\u03b1'>d</b>");
  EXPECT_EQ(folder.Files(), std::set<std::string>{"C:\\CSD_ResAutoMz_In.xml"});
  EXPECT_EQ(folder.Read("C:\\CSD_ResAutoMz_In.xml"), "<b c=\"\xce\xb1\">d</b>");
  EXPECT_EQ(folder.Said(), L"");
}

TEST(SaveDebugFile, TellsOfATextThatIsNoDocument) {
  const DebugFolder folder;
  SaveDebugFile(L"Any", L"abc");
  EXPECT_TRUE(folder.Files().empty());
  EXPECT_EQ(folder.Said(), L"Failed creating debug XML result file.\n");
}

TEST(SaveDebugFile, TellsOfAFileThatCannotBeWritten) {
  const DebugFolder folder;
  std::filesystem::create_directory(folder.Path() / "C:\\CSD_Any.xml");
  SaveDebugFile(L"Any", L"<a/>");
  EXPECT_EQ(folder.Said(), L"Failed saving debug XML result file.\n");
}
