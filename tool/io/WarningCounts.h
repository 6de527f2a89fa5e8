#pragma once
// Counts what is odd but readable in the spectra of one file, so that a file with a thousand odd spectra
// gives one warning and not a thousand.

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

class WarningCounts {
 public:
  // `what` completes the sentence "N spectra ...".
  void Add(const std::string& what, const std::string& place) {
    auto& [count, first] = found_[what];
    if (count++ == 0) first = place;
  }

  // As in "3 spectra with repeated m/z values, averaged (first at scan 2)".
  std::vector<std::string> Texts() const {
    return TextsWith([](std::uint64_t count) { return count == 1 ? " spectrum " : " spectra "; });
  }
  // The same without the word, as in "3 marked as centroid (first at scan 2)".
  std::vector<std::string> Counts() const {
    return TextsWith([](std::uint64_t) { return " "; });
  }

 private:
  template <class Word>
  std::vector<std::string> TextsWith(Word word) const {
    std::vector<std::string> texts;
    for (const auto& [what, where] : found_)
      texts.push_back(std::to_string(where.first) + word(where.first) + what + " (first at " + where.second +
                      ")");
    return texts;
  }

  std::map<std::string, std::pair<std::uint64_t, std::string>> found_;
};

}  // namespace TslTool
