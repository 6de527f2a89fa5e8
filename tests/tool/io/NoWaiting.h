#pragma once
#include <sqlite3.h>

namespace tests {

// As long as this lives, SQLite does not wait for locks: for tests in which nobody gives them up.
class NoWaiting {
 public:
  NoWaiting() : sleep_(System()->xSleep) {
    System()->xSleep = [](sqlite3_vfs*, int microseconds) { return microseconds; };
  }
  ~NoWaiting() { System()->xSleep = sleep_; }
  NoWaiting(const NoWaiting&) = delete;
  NoWaiting& operator=(const NoWaiting&) = delete;

 private:
  static sqlite3_vfs* System() { return sqlite3_vfs_find(nullptr); }

  decltype(sqlite3_vfs::xSleep) sleep_;
};

}  // namespace tests
