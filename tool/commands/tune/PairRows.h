#pragma once
// Which rows of two calibrations are the same one.

#include <cstddef>
#include <map>
#include <type_traits>
#include <vector>

namespace TslTool {

template <class Row>
struct RowPair {
  const Row* a;        // null for a row that b alone has
  const Row* b;        // null for a row that a alone has
  std::size_t number;  // from 1, in its table, which is that of a if a has it
};

// Rows of the same m/z belong together, and of the others those of the same name: one was moved.
// In the order of a, then what b alone has.
template <class Row>
std::vector<RowPair<Row>> PairRows(const std::vector<Row>& a, const std::vector<Row>& b) {
  std::vector<RowPair<Row>> pairs;
  pairs.reserve(a.size() + b.size());
  for (const Row& row : a) pairs.push_back({&row, nullptr, pairs.size() + 1});
  std::vector<bool> taken(b.size(), false);
  const auto pairBy = [&](auto key) {
    std::multimap<std::remove_cvref_t<decltype(a.front().*key)>, std::size_t> free;
    for (std::size_t i = 0; i < b.size(); ++i)
      if (!taken[i]) free.emplace(b[i].*key, i);
    for (RowPair<Row>& pair : pairs) {
      const auto found = pair.b == nullptr ? free.find(pair.a->*key) : free.end();
      if (found == free.end()) continue;
      pair.b = &b[found->second];
      taken[found->second] = true;
      free.erase(found);
    }
  };
  pairBy(&Row::MZ);
  pairBy(&Row::Name);
  for (std::size_t i = 0; i < b.size(); ++i)
    if (!taken[i]) pairs.push_back({nullptr, &b[i], i + 1});
  return pairs;
}

}  // namespace TslTool
