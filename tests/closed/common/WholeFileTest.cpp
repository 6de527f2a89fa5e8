#include <gtest/gtest.h>
#include <sys/stat.h>

#include <tslbl/closed/common/WholeFile.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace TslCommon;

namespace {

namespace fs = std::filesystem;

class WholeFile : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "tslbl-wholefile-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::wstring File(const std::string& name) const { return (folder_ / name).wstring(); }
  std::string Read(const std::string& name) const {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(File(name), bytes));
    return bytes;
  }
  auto Files() const { return std::distance(fs::directory_iterator(folder_), {}); }

  fs::path folder_;
};

}  // namespace

TEST_F(WholeFile, HasTheBytesThatWereWritten) {
  const std::string bytes("a\0b\r\n\xff", 6);
  EXPECT_TRUE(WriteWholeFile(File("a"), bytes));
  EXPECT_EQ(Read("a"), bytes);
  EXPECT_TRUE(WriteWholeFile(File("a"), ""));
  EXPECT_EQ(Read("a"), "");
  EXPECT_EQ(Files(), 1);
}

TEST_F(WholeFile, KeepsThePermissionsOfTheFileThatItReplaces) {
  ASSERT_TRUE(WriteWholeFile(File("a"), "1"));
  fs::permissions(folder_ / "a", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(WriteWholeFile(File("a"), "2"));
  EXPECT_EQ(fs::status(folder_ / "a").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WholeFile, IsReadableByOthersAsFarAsTheUserAllows) {
  const mode_t mask = umask(0022);
  EXPECT_TRUE(WriteWholeFile(File("a"), "1"));
  umask(mask);
  struct stat there = {};
  ASSERT_EQ(stat((folder_ / "a").c_str(), &there), 0);
  EXPECT_EQ(there.st_mode & 0777, 0644u);
}

TEST_F(WholeFile, IsWrittenThroughALink) {
  ASSERT_TRUE(WriteWholeFile(File("target"), "1"));
  fs::create_symlink("target", folder_ / "link");
  EXPECT_TRUE(WriteWholeFile(File("link"), "2"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(Read("target"), "2");
}

TEST_F(WholeFile, ThatCannotBeWrittenLeavesNothing) {
  EXPECT_FALSE(WriteWholeFile(File("no/such/a"), "1"));
  EXPECT_FALSE(WriteWholeFile(folder_.wstring(), "1"));
  EXPECT_EQ(Files(), 0);
}

TEST_F(WholeFile, OnAFullDeviceIsAFailure) { EXPECT_FALSE(WriteWholeFile(L"/dev/full", "1")); }

TEST_F(WholeFile, ThatIsMissingOrAFolderCannotBeRead) {
  std::string bytes = "before";
  EXPECT_FALSE(ReadWholeFile(File("missing"), bytes));
  EXPECT_FALSE(ReadWholeFile(folder_.wstring(), bytes));
}
