#pragma once
// Counts the spectra that are wanted and cannot be evaluated, by reason.

#include <tool/frame/InputError.h>
#include <tool/io/Scan.h>
#include <tool/io/WarningCounts.h>
#include <cstdint>
#include <string>

namespace TslTool {

class SkipCounts {
 public:
  // `strict` makes the first one an error.
  SkipCounts(std::string file, bool strict) : file_(std::move(file)), strict_(strict) {}

  void CountTaken() { ++taken_; }
  // `reason` completes the sentence "N spectra skipped: N ...".
  void Skip(const std::string& reason, const std::string& place) {
    if (strict_) throw InputError(file_, place, "cannot be evaluated: " + reason);
    ++skipped_;
    reasons_.Add(reason, place);
  }
  void Skip(const Defect& defect) {
    if (strict_) throw InputError(file_, defect.place, defect.reason);
    ++skipped_;
    reasons_.Add(defect.what, defect.place);
  }
  // Empty if none was skipped.
  std::string Text() const;

 private:
  std::string file_;
  bool strict_;
  std::uint64_t taken_ = 0;
  std::uint64_t skipped_ = 0;
  WarningCounts reasons_;
};

}  // namespace TslTool
