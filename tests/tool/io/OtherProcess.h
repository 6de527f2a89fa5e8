#pragma once
// Work in a process of its own, and in one that may not write.

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace tests {

// What `work` returns, or throws.
inline std::string TextOf(const std::function<std::string()>& work) {
  try {
    return work();
  } catch (const std::exception& error) {
    return error.what();
  }
}

// Does `work` in a process of its own and returns its text.
inline std::string InAnotherProcess(const std::function<std::string()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t id = fork();
  if (id == 0) {
    const std::string text = TextOf(work);
    _exit(write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0 : 1);
  }
  close(ends[1]);
  std::string text;
  char part[256];
  for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;)
    text.append(part, static_cast<std::size_t>(size));
  close(ends[0]);
  int status = 0;
  waitpid(id, &status, 0);
  return status == 0 ? text : "the process failed";
}

// The same with the permissions of a user: what root does, whom none stop, nobody does instead.
inline std::string AsUser(const std::function<std::string()>& work) {
  return InAnotherProcess([&]() -> std::string {
    constexpr uid_t kNobody = 65534;
    const bool user =
        geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0);
    return user ? work() : "there is no other user";
  });
}

// Permissions of a folder and of the files in it, as long as this lives; then its owner may do
// everything again.
class Permissions {
 public:
  Permissions(const std::string& folder, unsigned ofFolder, unsigned ofFiles) : folder_(folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) Set(entry.path(), ofFiles);
    Set(folder, ofFolder);
  }
  ~Permissions() { Set(folder_, 0700); }
  Permissions(const Permissions&) = delete;
  Permissions& operator=(const Permissions&) = delete;

 private:
  static void Set(const std::filesystem::path& path, unsigned mode) {
    std::filesystem::permissions(path, std::filesystem::perms(mode));
  }

  std::string folder_;
};

}  // namespace tests
