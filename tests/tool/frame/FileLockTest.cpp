#include <tool/frame/FileLock.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using TslTool::FileLock;

// An own hold on a file, apart from all others even in this process.
class Hold {
 public:
  explicit Hold(const std::string& file) : descriptor_(open(file.c_str(), O_RDONLY | O_CLOEXEC)) {}
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;
  ~Hold() { close(descriptor_); }

  bool Try() const { return flock(descriptor_, LOCK_EX | LOCK_NB) == 0; }
  // Whether someone waits for this file.
  bool IsAwaited() const {
    struct stat opened = {};
    fstat(descriptor_, &opened);
    const std::string inode = ":" + std::to_string(opened.st_ino) + " ";
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);)
      if (line.find("->") != std::string::npos && line.find(inode) != std::string::npos) return true;
    return false;
  }

 private:
  int descriptor_;
};

bool IsFree(const std::string& file) { return Hold(file).Try(); }

TEST(FileLock, KeepsOthersAwayUntilItEnds) {
  const TempFile file("a", "x");
  {
    const FileLock lock(file.Path());
    EXPECT_FALSE(IsFree(file.Path()));
  }
  EXPECT_TRUE(IsFree(file.Path()));
}

// Output replaces a file as a whole: who waited for the old one must not change that.
TEST(FileLock, OfAFileThatIsReplacedMeanwhileIsThatOfTheNewOneThreads) {
  const TempFile file("a", "old");
  std::optional<Hold> former(file.Path());
  ASSERT_TRUE(former->Try());
  bool newIsFree = true;
  std::thread waiting([&] {
    const FileLock lock(file.Path());
    newIsFree = IsFree(file.Path());
  });
  EXPECT_TRUE(WaitUntil([&] { return former->IsAwaited(); }));
  std::ofstream(file.Folder() + "/b") << "new";
  std::filesystem::rename(file.Folder() + "/b", file.Path());
  former.reset();
  waiting.join();
  EXPECT_FALSE(newIsFree);
}

TEST(FileLock, OfWhatIsNoFileThrows) {
  const TempFile file("a", "x");
  EXPECT_THROW(FileLock(file.Folder() + "/none"), std::runtime_error);
  EXPECT_THROW(FileLock(file.Folder()), std::runtime_error);
}

}  // namespace
}  // namespace tests
