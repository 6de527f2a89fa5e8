#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/commands/peaks/TableNames.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using TslTool::NameTables;
using TslTool::RequireNoneRead;

template <class Action>
std::string ErrorOf(Action action) {
  try {
    action();
  } catch (const TslTool::UsageError& e) {
    return e.what();
  }
  return "";
}

TEST(TableNames, AreThoseOfTheInputsInTheFolder) {
  const std::pair<const char*, const char*> cases[] = {
      {"a.mzML", "D/a.tsv"}, {"x/y/a.mzML.gz", "D/a.tsv"}, {"a.b.txt", "D/a.b.tsv"}, {"a", "D/a.tsv"},
      {"a.gz", "D/a.tsv"},   {".txt", "D/.txt.tsv"},       {"ä b.run", "D/ä b.tsv"}, {"/a.csv", "D/a.tsv"}};
  for (const auto& [input, table] : cases) EXPECT_EQ(NameTables({input}, "D", "tsv").at(0).table, table);
}

TEST(TableNames, EndAsTheFormat) {
  for (const auto& [format, table] : {std::pair("table", "D/a.txt"),
                                      {"tsv", "D/a.tsv"},
                                      {"json", "D/a.json"},
                                      {"xml", "D/a.xml"},
                                      {"mzml", "D/a.mzML"}})
    EXPECT_EQ(NameTables({"a.mzML"}, "D/", format).at(0).table, table);
}

TEST(TableNames, OfTwoInputsMustNotBeOne) {
  const std::string told = " would have one table, D/a.tsv; evaluate them into two folders";
  EXPECT_EQ(ErrorOf([] {
              NameTables({"a.mzML", "b.mzML", "x/a.run"}, "D", "tsv");
            }),
            "a.mzML and x/a.run" + told);
  EXPECT_EQ(ErrorOf([] { NameTables({"a.txt", "a.txt"}, "D", "tsv"); }), "a.txt and a.txt" + told);
  EXPECT_EQ(ErrorOf([] {
              NameTables({"a.txt", "-"}, "D", "tsv");
            }),
            "standard input has no name for its table; evaluate it alone");
}

TEST(TableNames, MustNotBeWhatIsRead) {
  const TempFile input("a.txt", "100 1\n");
  const std::string link = input.Folder() + "/link", part = input.Folder() + "/b.tsv.part";
  std::filesystem::create_symlink(input.Path(), link);
  std::filesystem::create_hard_link(input.Path(), part);
  const std::string end = " would be written over " + input.Path() + ", which is read";
  for (const auto& [table, written] :
       {std::pair(input.Path(), input.Path()), {link, link}, {input.Folder() + "/b.tsv", part}})
    EXPECT_EQ(ErrorOf([&, table = table] {
                RequireNoneRead({{"x", table}}, {"/no/such", input.Path()});
              }),
              "--output-dir: " + written + end);
  EXPECT_EQ(ErrorOf([&] { RequireNoneRead({{"x", input.Folder() + "/c.txt"}}, {input.Path()}); }), "");
}

// A name that is mistyped higher up makes no tree of folders, as with any other file that is written.
TEST(MakeFolder, MakesTheLastFolderAlone) {
  const TempFile file("a.txt", "");
  const std::string folder = file.Path() + ".folder";
  TslTool::MakeFolder(folder);
  TslTool::MakeFolder(folder);
  EXPECT_TRUE(std::filesystem::is_directory(folder));
  std::filesystem::remove(folder);
  EXPECT_THROW(TslTool::MakeFolder(folder + "/deeper"), TslTool::InputError);
  EXPECT_THROW(TslTool::MakeFolder(file.Path()), TslTool::InputError);
}

}  // namespace
}  // namespace tests
