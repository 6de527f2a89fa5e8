#pragma once
// Which edits of a user's go to which scan.

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

// On any number of threads.
template <class Edit>
class ScanEdits {
 public:
  using ByScan = std::map<std::uint32_t, std::vector<Edit>>;

  // `ofOne` go to the one spectrum that there is; `options` is how messages call the options that give them.
  // `isResumed`: a table is continued, which may have scans with edits already.
  ScanEdits(std::string input, ByScan byScan, std::vector<Edit> ofOne, std::string options,
            bool isResumed = false)
      : input_(std::move(input)),
        byScan_(std::move(byScan)),
        ofOne_(std::move(ofOne)),
        options_(std::move(options)),
        isResumed_(isResumed) {}

  // In the order in which they are made. Throws InputError for a second spectrum with edits of one.
  const std::vector<Edit>& Of(std::uint32_t scan) {
    if (!ofOne_.empty()) {
      if (isOneEdited_.exchange(true))
        throw InputError(input_, "",
                         options_ +
                             " edit one spectrum, and there are several; choose one with --scan, or list the "
                             "edits of each in a file for --edits");
      return ofOne_;
    }
    static const std::vector<Edit> none;
    const auto found = byScan_.find(scan);
    if (found == byScan_.end()) return none;
    const std::lock_guard lock(mutex_);
    seen_.insert(scan);
    return found->second;
  }

  // Warnings of edits of scans that never came.
  std::vector<std::string> Unused() const {
    std::vector<std::string> warnings;
    for (const auto& [scan, edits] : byScan_)
      if (!seen_.contains(scan))
        warnings.push_back(fmt::format("scan {} has edits and was not evaluated{}", scan,
                                       isResumed_ ? "; rows that the table had of it are as they were" : ""));
    return warnings;
  }

 private:
  std::string input_;
  ByScan byScan_;
  std::vector<Edit> ofOne_;
  std::string options_;
  bool isResumed_;
  std::atomic<bool> isOneEdited_ = false;
  std::mutex mutex_;  // of what follows
  std::set<std::uint32_t> seen_;
};

}  // namespace TslTool
