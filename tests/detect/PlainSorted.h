#pragma once
// The finding of features tallest first in its plainest form, to hold the library against:
// candidates found by looking at every point, spans by looking at every row.

#include <algorithm>
#include <utility>
#include <vector>

namespace tests {

struct PlainRow {
  int start = 0;
  int apex = 0;
  int end = 0;

  bool operator==(const PlainRow&) const = default;
};

class PlainSorted {
 public:
  PlainSorted(const std::vector<double>& amplitudes, const std::vector<double>& base, double percent)
      : y_(amplitudes), base_(base), percent_(percent), n_(static_cast<int>(amplitudes.size())) {}

  // The rows of the points first to last, ascending by apex; `most` rows at most.
  std::vector<PlainRow> Rows(int first, int last, double floor, std::size_t most) const {
    std::vector<PlainRow> rows;
    if (n_ < 2 || last - first < 2) return rows;
    std::vector<int> tops = Tops(first, last);
    if (tops.size() > 5000) tops.resize(5000);
    for (const int top : tops) {
      if (floor > Y(top)) break;
      if (Base(top) >= Y(top) || IsSpanned(rows, top)) continue;
      Insert(rows, {Left(top), top, Right(top)});
      if (rows.size() >= most) break;
    }
    return rows;
  }

 private:
  double Y(int i) const { return y_[static_cast<std::size_t>(i)]; }
  double Base(int i) const { return base_[static_cast<std::size_t>(i)]; }
  double ValleyLevel(int i) const { return Base(i) + (Y(i) - Base(i)) * percent_ * 0.01; }

  // Middles of runs of equal points with a lower point on both sides, the tallest first.
  std::vector<int> Tops(int first, int last) const {
    std::vector<int> tops;
    for (int l = 1; l < n_ - 1; ++l) {
      int r = l;
      while (r + 1 < n_ && Y(r + 1) == Y(l)) ++r;
      const int middle = (l + r) / 2;
      if (Y(l - 1) < Y(l) && r + 1 < n_ && Y(r + 1) < Y(r) && middle >= first && middle <= last)
        tops.push_back(middle);
    }
    std::stable_sort(tops.begin(), tops.end(), [this](int a, int b) { return Y(a) > Y(b); });
    return tops;
  }

  int Left(int apex) const {
    bool low = false;
    for (int k = apex; k > 1; --k) {
      if (Y(k - 1) <= ValleyLevel(apex)) low = true;
      if (low && Y(k) < Y(k - 1) && Y(k) < Y(k - 2)) return k;
      if (Base(k - 1) >= Y(k - 1)) return k - 1;
    }
    return apex >= 1 && Y(1) > Y(0) ? 0 : std::min(apex, 1);
  }

  int Right(int apex) const {
    bool low = false;
    for (int k = apex; k < n_ - 2; ++k) {
      if (Y(k + 1) <= ValleyLevel(apex)) low = true;
      if (low && Y(k) < Y(k + 1) && Y(k) < Y(k + 2)) return k;
      if (Base(k + 1) >= Y(k + 1)) return k + 1;
    }
    return apex <= n_ - 2 && Y(n_ - 2) > Y(n_ - 1) ? n_ - 1 : std::max(apex, n_ - 2);
  }

  // As the search of a table by halves does it: rows whose overlaps were exchanged need not
  // ascend, and what it then finds is part of the rule.
  static bool IsSpanned(const std::vector<PlainRow>& rows, int point) {
    const int n = static_cast<int>(rows.size());
    if (n == 0 || point < rows.front().start || point > rows.back().end) return false;
    int lo = 0, hi = n, mid = n / 2;
    while (hi >= lo && mid < n) {
      const PlainRow& row = rows[static_cast<std::size_t>(mid)];
      if (point < row.start) {
        hi = mid - 1;
      } else if (point <= row.end) {
        return true;
      } else {
        lo = mid + 1;
      }
      mid = lo + (hi - lo) / 2;
    }
    return false;
  }

  static void Insert(std::vector<PlainRow>& rows, PlainRow row) {
    std::size_t at = 0;
    while (at < rows.size() && rows[at].apex < row.apex) ++at;
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(at), row);
    PlainRow& cur = rows[at];
    if (at > 0) {
      PlainRow& prev = rows[at - 1];
      if (cur.start < prev.apex) {
        cur.start = prev.end;
      } else if (cur.start < prev.end) {
        std::swap(cur.start, prev.end);
      }
    }
    if (at + 1 < rows.size()) {
      PlainRow& next = rows[at + 1];
      if (cur.end > next.apex) {
        cur.end = next.start;
      } else if (next.start < cur.end) {
        std::swap(cur.end, next.start);
      }
    }
  }

  const std::vector<double>& y_;
  const std::vector<double>& base_;
  double percent_;
  int n_;
};

}  // namespace tests
