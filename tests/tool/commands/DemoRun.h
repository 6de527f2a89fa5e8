#pragma once
// The demonstration run with its truth as `simulate` writes them, made once for all tests.

#include <tool/ToolRun.h>

#include <string>
#include <vector>

namespace tests {

class DemoRun {
 public:
  static const DemoRun& Get() {
    static const DemoRun demo;
    return demo;
  }
  std::string Run() const { return folder_.Folder() + "/demo.run"; }
  const Outcome& Simulated() const { return simulated_; }
  const std::vector<Row>& Truth() const { return truth_; }
  // The rows of `peaks --format tsv` with some more words.
  std::vector<Row> Peaks(const Arguments& more = {}) const {
    Arguments words = {"peaks", Run(), "--format", "tsv"};
    words.insert(words.end(), more.begin(), more.end());
    const Outcome outcome = RunTool(words);
    if (outcome.status != 0) throw std::runtime_error(outcome.err);
    return RowsOf(outcome.out);
  }

 private:
  DemoRun()
      : simulated_(RunTool({"simulate", "--output", Run(), "--truth", folder_.Folder() + "/truth.tsv"})),
        truth_(RowsOf(ReadFile(folder_.Folder() + "/truth.tsv"))) {}

  TempFile folder_{"x", ""};
  Outcome simulated_;
  std::vector<Row> truth_;
};

}  // namespace tests
