#pragma once
// Keeps other processes of this program from changing a file meanwhile.

#include <string>

namespace TslTool {

// Waits until nobody else has it. Files that are replaced as a whole, as Output does it, are
// locked by what stands at their name. Throws std::runtime_error with the file's name if it
// cannot be opened or is no regular file; a file system without locks gives none.
class FileLock {
 public:
  explicit FileLock(const std::string& file);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  int descriptor_ = -1;
};

// Makes an empty file of a name that nothing has, which makes the name one's own. Throws
// std::runtime_error if there is anything.
void CreateExclusive(const std::string& file);

}  // namespace TslTool
