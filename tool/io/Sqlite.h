#pragma once
// A database file and its statements, for the run file. Every failure throws
// std::runtime_error with the file's name and the reason; one of SQLite's is a SqliteError.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TslTool {

constexpr int kPatience = 5000;  // milliseconds that another program may hold a file

class SqliteError : public std::runtime_error {
 public:
  SqliteError(const std::string& text, int code) : std::runtime_error(text), code_(code) {}
  // SQLite's primary result code, as SQLITE_BUSY.
  int Code() const { return code_; }

 private:
  int code_;
};

class Database {
 public:
  enum class Mode { Read, Create };

  // Errors call the file by `name`, which is its own unless another is given.
  Database(const std::string& file, Mode mode, const std::string& name = "");
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void Execute(const std::string& sql);
  // "wal", "memory" and so on, see SQLite's journal_mode. Throws if the database stays in another.
  void SetJournalMode(const std::string& mode);
  const std::string& File() const { return name_; }
  sqlite3* Handle() const { return handle_; }
  [[noreturn]] void Fail() const;

 private:
  std::string name_;
  sqlite3* handle_ = nullptr;
};

// One prepared statement. Parameters count from 1, columns from 0, as SQLite has it.
class Statement {
 public:
  Statement(const Database& database, const std::string& sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void Bind(int parameter, std::int64_t value);
  void Bind(int parameter, double value);
  // Text and blobs must stay as they are until the statement has run.
  void Bind(int parameter, std::string_view text);
  void BindBlob(int parameter, std::string_view bytes);

  // Advances to the next row; false when there is none left, from then on.
  bool Next();
  // Runs a statement that gives no rows and makes it ready to be bound anew.
  void Run();

  // Both fail, and name the column, where it holds something else.
  std::int64_t Integer(int column) const;
  double Real(int column) const;
  // Valid until the next row.
  std::string_view Bytes(int column) const;

 private:
  void Check(int result) const;
  [[noreturn]] void Refuse(int column, const char* reason) const;

  const Database& database_;
  sqlite3_stmt* handle_ = nullptr;
  bool ended_ = false;
};

}  // namespace TslTool
