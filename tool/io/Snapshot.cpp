#include <tool/io/Snapshot.h>

#include <stdlib.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

namespace TslTool {
namespace {

namespace fs = std::filesystem;

constexpr sqlite3_int64 kChunk = 1 << 20;
constexpr int kPause = 10;  // milliseconds between two attempts to lock a file

[[noreturn]] void FailAsSystemDoes() { throw std::system_error(errno, std::generic_category()); }

// A folder of this process alone among the temporary files.
class PrivateFolder {
 public:
  PrivateFolder() : path_((fs::temp_directory_path() / "tslbl-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) FailAsSystemDoes();
  }
  ~PrivateFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  std::string File() const { return path_ + "/copy"; }

 private:
  std::string path_;
};

// A database file under SQLite's lock of readers: meanwhile nobody settles a journal or changes
// the file by one. It is read through SQLite, since closing it by another way would unlock it.
class LockedFile {
 public:
  explicit LockedFile(const std::string& name) : database_(name, Database::Mode::Read) {
    sqlite3_file_control(database_.Handle(), nullptr, SQLITE_FCNTL_FILE_POINTER, &file_);
    int result = file_->pMethods->xLock(file_, SQLITE_LOCK_SHARED);
    for (int waited = 0; result == SQLITE_BUSY && waited < kPatience; waited += kPause) {
      sqlite3_sleep(kPause);
      result = file_->pMethods->xLock(file_, SQLITE_LOCK_SHARED);
    }
    Check(result);
  }
  ~LockedFile() { file_->pMethods->xUnlock(file_, SQLITE_LOCK_NONE); }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;

  void CopyTo(const std::string& copy) const {
    std::ofstream out(copy, std::ios::binary);
    sqlite3_int64 size = 0;
    Check(file_->pMethods->xFileSize(file_, &size));
    std::vector<char> chunk(kChunk);
    for (sqlite3_int64 at = 0; at < size && out; at += kChunk) {
      const auto length = static_cast<int>(std::min(kChunk, size - at));
      Check(file_->pMethods->xRead(file_, chunk.data(), length, at));
      out.write(chunk.data(), length);
    }
    if (!out.flush()) FailAsSystemDoes();
  }
  // What belongs to the file lies beside what a link leads to.
  std::string Journal() const { return sqlite3_filename_journal(Name()); }
  std::string Log() const { return sqlite3_filename_wal(Name()); }

 private:
  const char* Name() const { return sqlite3_db_filename(database_.Handle(), "main"); }
  void Check(int result) const {
    if (result != SQLITE_OK) throw SqliteError(database_.File() + ": " + sqlite3_errstr(result), result);
  }

  Database database_;
  sqlite3_file* file_ = nullptr;
};

void CopyIfThere(const std::string& file, const std::string& copy) {
  std::error_code error;
  fs::copy_file(file, copy, error);
  if (error == std::errc::no_such_file_or_directory) return;
  if (!error) fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write, error);
  if (error) throw std::system_error(error);
}

// The head of a log is another one each time that the log starts over.
std::string HeadOfLog(const std::string& log) {
  std::string head(32, '\0');
  std::ifstream in(log, std::ios::binary);
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(in.gcount()));
  return head;
}

void CopyWhole(const std::string& file, const std::string& copy) {
  const LockedFile database(file);
  const std::string head = HeadOfLog(database.Log());
  database.CopyTo(copy);
  CopyIfThere(database.Journal(), copy + "-journal");
  CopyIfThere(database.Log(), copy + "-wal");
  // Else pages were taken from the log into the file that stand in neither copy.
  if (HeadOfLog(copy + "-wal") != head)
    throw std::runtime_error(file + ": is being changed by another program");
}

// A transaction that has begun by reading has found what an earlier writer left.
std::unique_ptr<Database> Begun(std::unique_ptr<Database> database) {
  database->Execute("BEGIN; PRAGMA schema_version");
  return database;
}

// What SQLite says where it finds something to settle and may not: a journal, no log or no index,
// an index that is empty.
bool AsksForWriting(int code) {
  return code == SQLITE_READONLY || code == SQLITE_CANTOPEN || code == SQLITE_PROTOCOL;
}

// On return the copy is settled and read, and has no name any more, so that nothing of it stays.
std::unique_ptr<Database> OpenCopy(const std::string& file) {
  const PrivateFolder folder;
  CopyWhole(file, folder.File());
  return Begun(std::make_unique<Database>(folder.File(), Database::Mode::Create, file));
}

}  // namespace

std::unique_ptr<Database> OpenSnapshot(const std::string& file) {
  try {
    return Begun(std::make_unique<Database>(file, Database::Mode::Read));
  } catch (const SqliteError& error) {
    if (!AsksForWriting(error.Code())) throw;
  }
  try {
    return OpenCopy(file);
  } catch (const std::system_error& error) {
    throw std::runtime_error(
        file + ": must be recovered in a copy, which cannot be made: " + error.code().message());
  }
}

}  // namespace TslTool
