#pragma once
// Runs the tool as its user does: as a process of its own.

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <tool/TempFile.h>

namespace tests {

using Arguments = std::vector<std::string>;

inline std::string ReadFile(const std::string& path) {
  const std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

inline std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

struct Outcome {
  int status;  // exit status; 128 + N if signal N ended it
  std::string out, err;
};

// A started process, whose standard output and error go to files.
class Process {
 public:
  explicit Process(const Arguments& command) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, Path("out").c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&files, 2, Path("err").c_str(), O_WRONLY | O_CREAT, 0600);
    std::vector<char*> argv;
    for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const int failed = posix_spawn(&id_, argv[0], &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (failed != 0) throw std::runtime_error("cannot start " + command.front());
  }

  void Signal(int number) const { kill(id_, number); }
  bool Ends() {
    int status = 0;
    return waitpid(id_, &status, WNOHANG) == 0 ? false : (status_ = status, ended_ = true);
  }
  Outcome Wait() {
    if (!ended_) waitpid(id_, &status_, 0);
    const int status = WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
    return {status, ReadFile(Path("out")), ReadFile(Path("err"))};
  }

 private:
  std::string Path(const std::string& name) const { return folder_.Folder() + "/" + name; }

  TempFile folder_{"in", ""};
  pid_t id_ = 0;
  int status_ = 0;
  bool ended_ = false;
};

inline Arguments ToolCommand(const Arguments& arguments) {
  Arguments command = {TSLBL_TOOL};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

inline Outcome RunTool(const Arguments& arguments) { return Process(ToolCommand(arguments)).Wait(); }

// `script` finds the tool as $TSLBL.
inline Outcome RunShell(const std::string& script) {
  return Process({"/bin/sh", "-c", std::string("TSLBL='") + TSLBL_TOOL + "'; " + script}).Wait();
}

// Waits until `reached` holds, for at most 20 seconds.
inline bool WaitUntil(const std::function<bool()>& reached) {
  using namespace std::chrono_literals;
  for (int i = 0; i < 10000; ++i) {
    if (reached()) return true;
    std::this_thread::sleep_for(2ms);
  }
  return false;
}

inline std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

inline std::vector<std::string> CellsOf(const std::string& line) {
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (c == '\t') {
      cells.emplace_back();
    } else {
      cells.back() += c;
    }
  }
  return cells;
}

using Row = std::map<std::string, std::string>;

// A text with a header line and columns between tabs.
inline std::vector<Row> RowsOf(const std::string& text) {
  const std::vector<std::string> lines = LinesOf(text);
  std::vector<Row> rows;
  if (lines.empty()) return rows;
  const std::vector<std::string> names = CellsOf(lines.front());
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> cells = CellsOf(lines[i]);
    Row row;
    for (std::size_t k = 0; k < names.size(); ++k) row[names[k]] = cells.at(k);
    rows.push_back(row);
  }
  return rows;
}

inline std::vector<double> ColumnOf(const std::vector<Row>& rows, const std::string& name) {
  std::vector<double> values;
  for (const Row& row : rows) values.push_back(std::stod(row.at(name)));
  return values;
}

}  // namespace tests
