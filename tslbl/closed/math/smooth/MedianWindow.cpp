#include <tslbl/closed/math/smooth/MedianWindow.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace TslMath {
namespace {

constexpr std::size_t kWordBits = 64;

// Negative doubles count down as their bits count up.
std::int64_t FlipNegative(std::int64_t bits) {
  return bits < 0 ? bits ^ std::numeric_limits<std::int64_t>::max() : bits;
}

}  // namespace

std::int64_t OrderedKey(double value) { return FlipNegative(std::bit_cast<std::int64_t>(value)); }
double ValueOfKey(std::int64_t key) { return std::bit_cast<double>(FlipNegative(key)); }

void SortedWindow::Insert(std::size_t index) {
  const std::int64_t key = OrderedKey(y_[index]);
  keys_.insert(std::lower_bound(keys_.begin(), keys_.end(), key), key);
}

void SortedWindow::Erase(std::size_t index) {
  keys_.erase(std::lower_bound(keys_.begin(), keys_.end(), OrderedKey(y_[index])));
}

void SortedWindow::Replace(std::size_t oldIndex, std::size_t newIndex) {
  const std::int64_t oldKey = OrderedKey(y_[oldIndex]);
  const std::int64_t newKey = OrderedKey(y_[newIndex]);
  std::int64_t* at = &*std::lower_bound(keys_.begin(), keys_.end(), oldKey);
  if (newKey > oldKey) {
    const std::int64_t* last = &keys_.back();
    for (; at < last && at[1] < newKey; ++at) *at = at[1];
  } else {
    const std::int64_t* first = keys_.data();
    for (; at > first && at[-1] > newKey; --at) *at = at[-1];
  }
  *at = newKey;
}

RankWindow::RankWindow(const double* y, std::size_t first, std::size_t last)
    : first_(first), rankOf_(last - first), keys_(last - first), marks_((last - first) / kWordBits + 1) {
  std::vector<std::pair<std::int64_t, std::uint32_t>> sorted(last - first);
  for (std::uint32_t k = 0; k < sorted.size(); ++k) sorted[k] = {OrderedKey(y[first + k]), k};
  std::sort(sorted.begin(), sorted.end());
  for (std::uint32_t rank = 0; rank < sorted.size(); ++rank) {
    keys_[rank] = sorted[rank].first;
    rankOf_[sorted[rank].second] = rank;
  }
}

void RankWindow::Insert(std::size_t index) {
  const std::size_t rank = rankOf_[index - first_];
  marks_[rank / kWordBits] |= std::uint64_t{1} << rank % kWordBits;
  if (rank < at_) ++below_;
}

void RankWindow::Erase(std::size_t index) {
  const std::size_t rank = rankOf_[index - first_];
  marks_[rank / kWordBits] &= ~(std::uint64_t{1} << rank % kWordBits);
  if (rank < at_) --below_;
}

void RankWindow::Replace(std::size_t oldIndex, std::size_t newIndex) {
  Erase(oldIndex);
  Insert(newIndex);
}

double RankWindow::Ranked(std::size_t below) {
  for (; below_ > below; --below_) at_ = MarkedBefore(at_);
  at_ = NextMarked(at_);
  for (; below_ < below; ++below_) at_ = NextMarked(at_ + 1);
  return ValueOfKey(keys_[at_]);
}

std::size_t RankWindow::NextMarked(std::size_t rank) const {
  std::size_t word = rank / kWordBits;
  std::uint64_t marks = marks_[word] >> rank % kWordBits << rank % kWordBits;
  while (marks == 0) marks = marks_[++word];
  return word * kWordBits + static_cast<std::size_t>(std::countr_zero(marks));
}

std::size_t RankWindow::MarkedBefore(std::size_t rank) const {
  std::size_t word = rank / kWordBits;
  std::uint64_t marks = marks_[word] & ((std::uint64_t{1} << rank % kWordBits) - 1);
  while (marks == 0) marks = marks_[--word];
  return word * kWordBits + kWordBits - 1 - static_cast<std::size_t>(std::countl_zero(marks));
}

}  // namespace TslMath
