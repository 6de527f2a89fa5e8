#include <tool/frame/Suggestion.h>

#include <algorithm>

namespace TslTool {
namespace {

// Without dashes in front and capitals; a value behind "=" is none of the name.
std::string Bare(const std::string& word) {
  std::string bare = word.substr(0, word.find('='));
  bare.erase(0, std::min(bare.find_first_not_of('-'), bare.size()));
  std::ranges::transform(bare, bare.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return bare;
}

// How many letters must be changed, added, left out or exchanged with the next; each is touched once.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> before, above, row(b.size() + 1);
  for (std::size_t k = 0; k <= b.size(); ++k) row[k] = k;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::move(above);
    above = std::move(row);
    row.assign(b.size() + 1, i);
    for (std::size_t k = 1; k <= b.size(); ++k) {
      row[k] = std::min({above[k] + 1, row[k - 1] + 1, above[k - 1] + (a[i - 1] != b[k - 1])});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1])
        row[k] = std::min(row[k], before[k - 2] + 1);
    }
  }
  return row.back();
}

}  // namespace

std::string Suggestion(const std::string& word, const std::vector<std::string>& known) {
  const std::string bare = Bare(word);
  if (bare.size() < 2) return "";
  std::string nearest;
  std::size_t least = std::max<std::size_t>(bare.size() / 3, 1) + 1;
  for (const std::string& name : known) {
    const std::string other = Bare(name);
    if (other.size() < 2) continue;
    const bool begins = other != bare && other.starts_with(bare);
    const std::size_t distance = begins ? 1 : Distance(bare, other);
    if (distance >= least) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

}  // namespace TslTool
