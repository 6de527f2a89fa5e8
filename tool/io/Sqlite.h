#pragma once
// A database file and its statements, for the run file. Every failure of SQLite throws
// std::runtime_error with the file's name and SQLite's reason.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace TslTool {

class Database {
 public:
  enum class Mode { Read, Create };

  Database(const std::string& file, Mode mode);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void Execute(const std::string& sql);
  const std::string& File() const { return file_; }
  [[noreturn]] void Fail() const;

 private:
  friend class Statement;
  std::string file_;
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

  // Advances to the next row; false when there is none left.
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
};

}  // namespace TslTool
