#include <tool/io/Sqlite.h>

#include <cstring>

namespace TslTool {

Database::Database(const std::string& file, Mode mode, const std::string& name)
    : name_(name.empty() ? file : name) {
  const int flags = mode == Mode::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  // SQLite keeps names with a colon in front for itself.
  const std::string path = file.starts_with(':') ? "./" + file : file;
  if (sqlite3_open_v2(path.c_str(), &handle_, flags, nullptr) == SQLITE_OK) {
    sqlite3_busy_timeout(handle_, kPatience);
    return;
  }
  std::string reason = handle_ != nullptr ? sqlite3_errmsg(handle_) : "out of memory";
  if (const int error = handle_ != nullptr ? sqlite3_system_errno(handle_) : 0; error != 0)
    reason = std::string("cannot be opened: ") + std::strerror(error);
  sqlite3_close(handle_);
  throw std::runtime_error(name_ + ": " + reason);
}

Database::~Database() { sqlite3_close(handle_); }

void Database::Execute(const std::string& sql) {
  if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

void Database::SetJournalMode(const std::string& mode) {
  Statement set(*this, "PRAGMA journal_mode = " + mode);
  set.Next();
  if (set.Bytes(0) != mode)
    throw std::runtime_error(name_ + ": keeps journal mode " + std::string(set.Bytes(0)) + " instead of " +
                             mode);
}

void Database::Fail() const {
  throw SqliteError(name_ + ": " + sqlite3_errmsg(handle_), sqlite3_errcode(handle_) & 0xff);
}

Statement::Statement(const Database& database, const std::string& sql) : database_(database) {
  Check(sqlite3_prepare_v2(database.Handle(), sql.c_str(), -1, &handle_, nullptr));
}

Statement::~Statement() { sqlite3_finalize(handle_); }

void Statement::Check(int result) const {
  if (result != SQLITE_OK) database_.Fail();
}

void Statement::Bind(int parameter, std::int64_t value) {
  Check(sqlite3_bind_int64(handle_, parameter, value));
}
void Statement::Bind(int parameter, double value) { Check(sqlite3_bind_double(handle_, parameter, value)); }

void Statement::Bind(int parameter, std::string_view text) {
  Check(sqlite3_bind_text64(handle_, parameter, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::BindBlob(int parameter, std::string_view bytes) {
  // A null pointer would bind NULL; an empty blob is a value.
  const char* data = bytes.empty() ? "" : bytes.data();
  Check(sqlite3_bind_blob64(handle_, parameter, data, bytes.size(), SQLITE_STATIC));
}

bool Statement::Next() {
  // Another step would begin anew.
  if (ended_) return false;
  const int result = sqlite3_step(handle_);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) database_.Fail();
  ended_ = true;
  return false;
}

void Statement::Run() {
  Next();
  Check(sqlite3_reset(handle_));
  ended_ = false;
}

std::int64_t Statement::Integer(int column) const {
  if (sqlite3_column_type(handle_, column) != SQLITE_INTEGER) Refuse(column, " is not a whole number");
  return sqlite3_column_int64(handle_, column);
}

double Statement::Real(int column) const {
  const int type = sqlite3_column_type(handle_, column);
  if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) Refuse(column, " is not a number");
  return sqlite3_column_double(handle_, column);
}

void Statement::Refuse(int column, const char* reason) const {
  throw std::runtime_error(database_.File() + ": " + sqlite3_column_name(handle_, column) + reason);
}

std::string_view Statement::Bytes(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(handle_, column));
  const int size = sqlite3_column_bytes(handle_, column);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<std::size_t>(size));
}

}  // namespace TslTool
