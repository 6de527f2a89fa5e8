#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include <tool/TempFile.h>
#include <tool/io/Sqlite.h>

namespace tests {
namespace {

using namespace std::string_view_literals;
using TslTool::Database;
using TslTool::Statement;

struct Fixture {
  TempFile file{"numbers.db", ""};
  Database database{file.Path(), Database::Mode::Create};

  Fixture() { database.Execute("CREATE TABLE t(i INTEGER, r REAL, s TEXT, b BLOB)"); }
};

std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(Sqlite, KeepsEveryKindOfValue) {
  const Fixture f;
  Statement insert(f.database, "INSERT INTO t VALUES (?, ?, ?, ?)");
  insert.Bind(1, std::int64_t{-5});
  insert.Bind(2, 0.1);
  insert.Bind(3, "\xc3\xa4"sv);
  insert.BindBlob(4, "a\0b"sv);
  insert.Run();
  Statement rows(f.database, "SELECT * FROM t");
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Integer(0), -5);
  EXPECT_EQ(rows.Real(1), 0.1);
  EXPECT_EQ(rows.Bytes(2), "\xc3\xa4");
  EXPECT_EQ(rows.Bytes(3), "a\0b"sv);
  EXPECT_FALSE(rows.Next());
}

TEST(Sqlite, RowsThatHaveEndedStayEnded) {
  Fixture f;
  f.database.Execute("INSERT INTO t(i) VALUES (1)");
  Statement rows(f.database, "SELECT i FROM t");
  EXPECT_TRUE(rows.Next());
  EXPECT_FALSE(rows.Next());
  EXPECT_FALSE(rows.Next());
}

TEST(Sqlite, AStatementCanRunAgainWithOtherValues) {
  const Fixture f;
  Statement insert(f.database, "INSERT INTO t(i) VALUES (?)");
  for (const std::int64_t value : {1, 2, 3}) {
    insert.Bind(1, value);
    insert.Run();
  }
  Statement sum(f.database, "SELECT sum(i) FROM t");
  ASSERT_TRUE(sum.Next());
  EXPECT_EQ(sum.Integer(0), 6);
}

TEST(Sqlite, AnEmptyBlobIsNotNull) {
  const Fixture f;
  Statement insert(f.database, "INSERT INTO t(b) VALUES (?)");
  insert.BindBlob(1, "");
  insert.Run();
  Statement kind(f.database, "SELECT typeof(b) FROM t");
  ASSERT_TRUE(kind.Next());
  EXPECT_EQ(kind.Bytes(0), "blob");
}

TEST(Sqlite, AValueOfAnotherKindIsRefusedWithItsColumn) {
  Fixture f;
  f.database.Execute("INSERT INTO t(i, r) VALUES ('many', NULL)");
  Statement rows(f.database, "SELECT i, r FROM t");
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(ErrorOf([&] { rows.Integer(0); }), f.file.Path() + ": i is not a whole number");
  EXPECT_EQ(ErrorOf([&] { rows.Real(1); }), f.file.Path() + ": r is not a number");
}

TEST(Sqlite, ErrorsNameTheFileAndTheReason) {
  Fixture f;
  EXPECT_EQ(ErrorOf([&] { f.database.Execute("SELECT * FROM nowhere"); }),
            f.file.Path() + ": no such table: nowhere");
  EXPECT_EQ(ErrorOf([&] { Statement(f.database, "SELEC"); }),
            f.file.Path() + ": near \"SELEC\": syntax error");
  EXPECT_EQ(ErrorOf([] { Database("/no/such/db", Database::Mode::Create); }),
            "/no/such/db: cannot be opened: No such file or directory");
}

TEST(Sqlite, AJournalModeThatIsNotTakenIsAnError) {
  Fixture f;
  f.database.Execute("BEGIN; INSERT INTO t(i) VALUES (1)");
  EXPECT_EQ(ErrorOf([&] { f.database.SetJournalMode("wal"); }),
            f.file.Path() + ": keeps journal mode delete instead of wal");
}

TEST(Sqlite, ErrorsHaveACodeAndTheNameThatIsGiven) {
  const Fixture f;
  Database reader(f.file.Path(), Database::Mode::Read, "the run");
  try {
    reader.Execute("DELETE FROM t");
    FAIL();
  } catch (const TslTool::SqliteError& error) {
    EXPECT_EQ(error.Code(), SQLITE_READONLY);
    EXPECT_STREQ(error.what(), "the run: attempt to write a readonly database");
  }
}

TEST(Sqlite, ReadingWritesNothing) {
  const Fixture f;
  Database reader(f.file.Path(), Database::Mode::Read);
  EXPECT_THAT(ErrorOf([&] { reader.Execute("DELETE FROM t"); }), testing::HasSubstr("readonly"));
}

TEST(Sqlite, ANameWithAColonInFrontIsAFileLikeAnyOther) {
  const TempFile folder("x", "");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Folder());
  Database(":memory:", Database::Mode::Create).Execute("CREATE TABLE t(i)");
  EXPECT_TRUE(std::filesystem::exists(folder.Folder() + "/:memory:"));
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace tests
