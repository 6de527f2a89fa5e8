#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/io/KilledProcess.h>
#include <tool/io/NoWaiting.h>
#include <tool/io/OtherProcess.h>
#include <tool/io/Snapshot.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::Database;
using TslTool::OpenSnapshot;
using TslTool::Statement;

constexpr int kRows = 100;

// A table of rows with i = 1, several to a page.
void MakeTable(const std::string& file, const std::string& mode) {
  Database database(file, Database::Mode::Create);
  database.SetJournalMode(mode);
  database.Execute("CREATE TABLE t(i INTEGER, b BLOB)");
  database.Execute("WITH RECURSIVE row(n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM row WHERE n < " +
                   std::to_string(kRows) + ") INSERT INTO t SELECT 1, zeroblob(1000) FROM row");
}

std::int64_t Sum(const Database& database) {
  Statement sum(database, "SELECT sum(i) FROM t");
  sum.Next();
  return sum.Integer(0);
}

// A table of which half the rows have another value, and the journal with the earlier one.
class HalfChanged {
 public:
  HalfChanged() {
    MakeTable(Path(), "delete");
    IsKilledAt({~0U, false}, [this] {
      Database database(Path(), Database::Mode::Create);
      database.Execute("PRAGMA cache_size = 2; BEGIN; UPDATE t SET i = 2");
      kill(getpid(), SIGKILL);
    });
  }
  std::string Path() const { return file_.Path(); }

 private:
  TempFile file_{"t.db", ""};
};

// The folder for temporary files, as long as this lives.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::string& path) {
    const char* before = std::getenv("TMPDIR");
    if (before != nullptr) before_ = before;
    setenv("TMPDIR", path.c_str(), 1);
  }
  ~TemporaryFolder() {
    if (before_.empty())
      unsetenv("TMPDIR");
    else
      setenv("TMPDIR", before_.c_str(), 1);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

 private:
  std::string before_;
};

std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(Snapshot, IsWhatWasCommittedWhenItWasOpened) {
  const TempFile file("t.db", "");
  MakeTable(file.Path(), "wal");
  Database writer(file.Path(), Database::Mode::Create);
  writer.Execute("BEGIN; UPDATE t SET i = 2");
  const auto before = OpenSnapshot(file.Path());
  writer.Execute("COMMIT");
  EXPECT_EQ(Sum(*before), kRows);
  EXPECT_EQ(Sum(*OpenSnapshot(file.Path())), 2 * kRows);
}

TEST(Snapshot, HalfATransactionIsRolledBackForItsReaderAlone) {
  const HalfChanged half;
  const std::string bytes = ReadFile(half.Path());
  const std::string journal = ReadFile(half.Path() + "-journal");
  const auto one = OpenSnapshot(half.Path());
  const auto another = OpenSnapshot(half.Path());
  EXPECT_EQ(Sum(*one), kRows);
  EXPECT_EQ(Sum(*another), kRows);
  EXPECT_EQ(ReadFile(half.Path()), bytes);
  EXPECT_EQ(ReadFile(half.Path() + "-journal"), journal);
}

TEST(Snapshot, ALinkLeadsToTheJournalToo) {
  const HalfChanged half;
  const TempFile folder("x", "");
  std::filesystem::create_symlink(half.Path(), folder.Folder() + "/link");
  EXPECT_EQ(Sum(*OpenSnapshot(folder.Folder() + "/link")), kRows);
}

TEST(Snapshot, ItsCopyIsGoneWhileItIsRead) {
  const HalfChanged half;
  const TempFile room("x", "");
  const TemporaryFolder temporary(room.Folder());
  const auto snapshot = OpenSnapshot(half.Path());
  EXPECT_THAT(NamesIn(room.Folder()), ElementsAre("x"));
  EXPECT_EQ(Sum(*snapshot), kRows);
}

TEST(Snapshot, ATransactionInHandIsLeftAlone) {
  const TempFile file("t.db", "");
  MakeTable(file.Path(), "delete");
  Database writer(file.Path(), Database::Mode::Create);
  writer.Execute("BEGIN; UPDATE t SET i = 2");
  ASSERT_TRUE(std::filesystem::exists(file.Path() + "-journal"));
  EXPECT_EQ(Sum(*OpenSnapshot(file.Path())), kRows);
  writer.Execute("COMMIT");
  EXPECT_EQ(Sum(*OpenSnapshot(file.Path())), 2 * kRows);
}

TEST(Snapshot, ACopyWithoutAPlaceIsToldWithItsReason) {
  const HalfChanged half;
  const TemporaryFolder temporary("/no/such/folder");
  EXPECT_EQ(ErrorOf([&] { OpenSnapshot(half.Path()); }),
            half.Path() + ": must be recovered in a copy, which cannot be made: No such file or directory");
}

TEST(Snapshot, ACopyWithoutRoomIsToldWithItsReason) {
  const HalfChanged half;
  const TempFile room("x", "");
  const TemporaryFolder temporary(room.Folder());
  const std::string error = InAnotherProcess([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {50000, 50000};
    setrlimit(RLIMIT_FSIZE, &limit);
    return ErrorOf([&] { OpenSnapshot(half.Path()); });
  });
  EXPECT_EQ(error, half.Path() + ": must be recovered in a copy, which cannot be made: File too large");
  EXPECT_THAT(NamesIn(room.Folder()), ElementsAre("x"));
}

// What another program does while the file is copied.
std::function<void()> meanwhile;

// Pages are read one by one, a copy is not.
ssize_t ReadAndLetOthersDo(int file, void* bytes, std::size_t size, off_t at) {
  if (size > 10000) meanwhile();
  return pread(file, bytes, size, at);
}

void LetOthersDo(const std::function<void()>& action) {
  meanwhile = action;
  for (const char* name : {"pread", "pread64"})
    sqlite3_vfs_find(nullptr)->xSetSystemCall(sqlite3_vfs_find(nullptr), name,
                                              reinterpret_cast<sqlite3_syscall_ptr>(ReadAndLetOthersDo));
}

TEST(Snapshot, NobodyChangesAFileThatIsBeingCopied) {
  const HalfChanged half;
  const std::string error = InAnotherProcess([&] {
    std::string refused;
    LetOthersDo([&] {
      refused = InAnotherProcess([&] {
        const NoWaiting othersStay;
        return ErrorOf([&] { Database(half.Path(), Database::Mode::Create).Execute("DELETE FROM t"); });
      });
    });
    return std::to_string(Sum(*OpenSnapshot(half.Path()))) + ", " + refused;
  });
  EXPECT_EQ(error, std::to_string(kRows) + ", " + half.Path() + ": database is locked");
}

// What a log that starts over had before is in neither copy.
TEST(Snapshot, OfALogThatStartsOverMeanwhileThereIsNone) {
  const HalfChanged half;
  const std::string error = InAnotherProcess([&] {
    std::ofstream(half.Path() + "-wal") << "one";
    LetOthersDo([&] { std::ofstream(half.Path() + "-wal") << "two"; });
    return ErrorOf([&] { OpenSnapshot(half.Path()); });
  });
  EXPECT_EQ(error, half.Path() + ": is being changed by another program");
}

TEST(Snapshot, OfADamagedFileNamesItAndNotItsCopy) {
  const HalfChanged half;
  std::fstream(half.Path(), std::ios::in | std::ios::out | std::ios::binary) << "anything else";
  EXPECT_EQ(ErrorOf([&] { OpenSnapshot(half.Path()); }), half.Path() + ": file is not a database");
}

}  // namespace
}  // namespace tests
