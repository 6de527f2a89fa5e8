#include <tool/commands/overlap/GroupEdits.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using TslTool::EditsByScan;
using TslTool::GroupEdit;

EditsByScan EditsIn(const std::string& text) {
  return TslTool::ReadEdits(TempFile("edits.tsv", text).Path());
}

std::string Failure(const std::string& text) {
  try {
    EditsIn(text);
  } catch (const TslTool::InputError& e) {
    return e.what();
  }
  return "";
}

TEST(ReadEdits, KeepsTheirOrderInEachScan) {
  const EditsByScan edits = EditsIn("7\tadd\t508.2\n3\tremove\t300.25\n7\tremove\t509\n");
  ASSERT_EQ(edits.size(), 2U);
  EXPECT_THAT(edits.at(7),
              ElementsAre(GroupEdit{GroupEdit::Add, 508.2}, GroupEdit{GroupEdit::Remove, 509.0}));
  EXPECT_THAT(edits.at(3), ElementsAre(GroupEdit{GroupEdit::Remove, 300.25}));
}

TEST(ReadEdits, PassesOverNamesRemarksAndEmptyLines) {
  const EditsByScan edits = EditsIn("# of Monday\nscan\tedit\tmz\n\n  3   add  300.5  \r\n#\n");
  EXPECT_THAT(edits.at(3), ElementsAre(GroupEdit{GroupEdit::Add, 300.5}));
  EXPECT_TRUE(EditsIn("").empty());
}

TEST(ReadEdits, NamesTheLineAndTheValueThatIsWrong) {
  EXPECT_THAT(Failure("3\tadd\t300\nx\tadd\t300\n"), EndsWith("/edits.tsv: line 2: \"x\" is no scan number"));
  EXPECT_THAT(Failure("-3\tadd\t300\n"), EndsWith("line 1: \"-3\" is no scan number"));
  EXPECT_THAT(Failure("5000000000\tadd\t300\n"), EndsWith("line 1: \"5000000000\" is no scan number"));
  EXPECT_THAT(Failure("3\tdrop\t300\n"), EndsWith("line 1: \"drop\" is neither \"add\" nor \"remove\""));
  EXPECT_THAT(Failure("3\tadd\n"), EndsWith("line 1: has 2 fields, not the three SCAN add|remove MZ"));
  EXPECT_THAT(Failure("3\tadd\t300\t4\n"),
              EndsWith("line 1: has 4 fields, not the three SCAN add|remove MZ"));
  EXPECT_THAT(Failure("3\tadd\t-300\n"), EndsWith("line 1: the m/z -300 is not above 0"));
  EXPECT_THAT(Failure("3\tadd\t30x\n"), testing::HasSubstr("line 1: \"30x\""));
}

}  // namespace
}  // namespace tests
