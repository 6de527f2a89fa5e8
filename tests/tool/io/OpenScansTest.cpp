#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>

namespace tests {
namespace {

using namespace std::string_view_literals;
using TslTool::FileKind;
using TslTool::InputError;
using TslTool::KindOf;
using TslTool::OpenScans;

std::string ErrorOf(const std::string& file) {
  try {
    OpenScans(file);
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

TEST(OpenScans, TellsTheKindFromTheFirstBytes) {
  EXPECT_EQ(KindOf(""), FileKind::Empty);
  EXPECT_EQ(KindOf("<?xml"), FileKind::Xml);
  EXPECT_EQ(KindOf("\xef\xbb\xbf \n<mzML>"), FileKind::Xml);
  EXPECT_EQ(KindOf("SQLite format 3\0tail"sv), FileKind::Sqlite);
  EXPECT_EQ(KindOf("100 5\n"), FileKind::Text);
  EXPECT_EQ(KindOf("  \n"), FileKind::Text);
}

TEST(OpenScans, LooksThroughGzipForTheKind) {
  const TempFile file("anything", Gzip("<mzML/>"));
  EXPECT_EQ(TslTool::KindOfFile(file.Path()), FileKind::Xml);
}

TEST(OpenScans, TakesXmlForMzMLWhateverItsName) {
  const TempFile file("run.txt", "<mzML></mzML>");
  EXPECT_EQ(OpenScans(file.Path())->Format(), "mzML");
}

TEST(OpenScans, TakesOtherContentForText) {
  const TempFile file("run.csv", "100,5\n");
  EXPECT_EQ(OpenScans(file.Path())->Format(), "two-column text");
}

TEST(OpenScans, ExpectsMzMLWhereTheNameSaysSo) {
  const TempFile file("run.mzML", "100 5\n");
  EXPECT_EQ(ErrorOf(file.Path()), file.Path() + ": line 1: not XML: the file begins with \"100 5\\n\"");
}

TEST(OpenScans, NamesAMissingFile) {
  EXPECT_EQ(ErrorOf("/no/such/file.mzML"),
            "/no/such/file.mzML: the file does not exist or cannot be reached");
}

TEST(OpenScans, NamesAFolder) {
  const TempFile file("x", "");
  EXPECT_EQ(ErrorOf(file.Folder()), file.Folder() + ": is a folder, not a file");
}

TEST(OpenScans, NamesAnEmptyFile) {
  for (const std::string& content : {std::string(), Gzip("")}) {
    const TempFile file("run.mzML", content);
    EXPECT_EQ(ErrorOf(file.Path()), file.Path() + ": the file is empty");
  }
}

TEST(OpenScans, NamesAnSqliteFile) {
  const TempFile file("run.tsl", "SQLite format 3\0rest"sv);
  EXPECT_EQ(ErrorOf(file.Path()),
            file.Path() + ": an SQLite file, as runs are, which is read by its name and not from a pipe");
}

TEST(OpenScans, TellsWhatAFolderIsAndWhatAForeignFileIs) {
  const TempFile file("AcqData", "\x89HDF\r\n\x1a\n");
  EXPECT_THAT(ErrorOf(file.Folder()),
              testing::HasSubstr(": is a folder, an Agilent MassHunter data folder; "));
  EXPECT_THAT(ErrorOf(file.Path()), testing::HasSubstr(": an HDF5 file "));
}

TEST(OpenScans, ChoosesColumnsOfTextOnly) {
  TslTool::ScanFilter filter;
  filter.columns = {"2", "1"};
  const TempFile text("a.txt", "5 100\n6 101\n");
  const TempFile mzml("a.mzML", "<mzML></mzML>");
  EXPECT_NO_THROW(OpenScans(text.Path())->SetFilter(filter));
  EXPECT_THROW(OpenScans(mzml.Path())->SetFilter(filter), TslTool::UsageError);
}

// A socket, since the superuser may read everything else.
TEST(OpenScans, NamesAFileThatCannotBeOpened) {
  const TempFile folder("x", "");
  sockaddr_un address{AF_UNIX, {}};
  (folder.Folder() + "/s").copy(address.sun_path, sizeof address.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(ErrorOf(address.sun_path),
            std::string(address.sun_path) + ": cannot be opened: No such device or address");
  close(listener);
}

}  // namespace
}  // namespace tests
