#pragma once
// The sequential finding of features in its plainest form, to hold the library against: one
// sweep, each new feature settled with those before it at once, features that were cut or
// swallowed set free one by one when what cut them is swallowed itself. Costs exponential
// time where features rise like a staircase, so for small curves only.

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace tests {

class PlainSweep {
 public:
  PlainSweep(const std::vector<double>& amplitudes, const std::vector<double>& base, double percent)
      : y_(amplitudes), base_(base), percent_(percent), n_(static_cast<int>(amplitudes.size())) {
    Sweep();
  }

  // start, apex and end of each feature that is left.
  std::vector<std::array<int, 3>> Rows() const {
    std::vector<std::array<int, 3>> rows;
    for (const Feature& f : features_) {
      if (f.fate == Swallowed) continue;
      rows.push_back({f.start, f.apex, f.fate == Cut ? features_[f.by].start : f.end});
    }
    return rows;
  }

  int timesSetFree = 0;
  int timesCut = 0;
  int timesSwallowed = 0;

 private:
  enum Fate { Whole, Cut, Swallowed };
  struct Feature {
    int start = 0;
    int apex = 0;
    int end = 0;
    Fate fate = Whole;
    std::size_t by = 0;
  };

  double Y(int i) const { return y_[static_cast<std::size_t>(i)]; }
  double Base(int i) const { return base_[static_cast<std::size_t>(i)]; }
  bool Above(int i) const { return Y(i) > Base(i); }
  bool Rising(int i) const { return i == 0 || Y(i - 1) < Y(i); }
  double ValleyLevel(int i) const {
    return Base(i) >= Y(i) ? Y(i) : Base(i) + (Y(i) - Base(i)) * percent_ * 0.01;
  }

  void Sweep() {
    int q = 1;
    while (q < n_ && Y(q) == Y(0)) ++q;
    if (q >= n_) return;
    int p = Y(q) > Y(0) ? q : 0;
    while (p < n_)
      if (!Step(p)) return;
  }

  bool Step(int& p) {
    const int last = n_ - 1;
    while (p < n_ && !Above(p)) ++p;
    if (p == n_) return false;
    while (p < last) {
      if (!Above(p)) break;
      if (Rising(p) && Y(p + 1) <= Y(p)) break;
      ++p;
    }
    if (p == last && p != 0 && !(Y(p - 1) < Y(p))) return false;
    if (!Above(p)) return p < last;

    Feature f;
    f.apex = p;
    f.start = Left(p);
    Settle(features_.size(), f.start, Y(p), features_.size());
    if (p < f.start) {
      p = f.start;
      return true;
    }
    const bool on = Right(f, p);
    features_.push_back(f);
    return on;
  }

  int Left(int apex) const {
    const double v = ValleyLevel(apex);
    bool low = false;
    int k = apex;
    while (k > 1) {
      if (!low) low = Y(k - 1) <= v;
      if (low && Y(k) < Y(k - 1) && Y(k) < Y(k - 2)) return k;
      if (!Above(k - 1)) return k - 1;
      --k;
    }
    if (k == 1 && Y(1) > Y(0)) return 0;
    return k;
  }

  bool Right(Feature& f, int& p) const {
    const double v = ValleyLevel(f.apex);
    bool low = false;
    if (f.apex == n_ - 1) {
      f.end = f.apex;
      return false;
    }
    for (int c = f.apex;; ++c) {
      p = c + 1;
      if (c < n_ - 2) {
        if (!low) low = Y(c + 1) <= v;
        if (low && Y(c) < Y(c + 2) && Y(c) < Y(c + 1)) {
          f.end = c;
          return true;
        }
      }
      if (c == n_ - 2) {
        const bool falls = Y(c) > Y(c + 1);
        f.end = falls ? c + 1 : c;
        return !falls;
      }
      if (!Above(c + 1)) {
        f.end = c + 1;
        return true;
      }
      if (Y(c) < Y(c + 1) && Y(c + 2) <= Y(c + 1) && Y(c + 1) > Y(f.apex)) {
        f.end = c;
        return true;
      }
    }
  }

  void Settle(std::size_t index, int& left, double height, std::size_t from) {
    for (std::size_t i = from; i > 0; --i) {
      Feature& f = features_[i - 1];
      if (f.end < left) return;
      if (height <= Y(f.apex)) {
        left = f.end;
        return;
      }
      f.by = index;
      if (f.apex < left) {
        f.fate = Cut;
        ++timesCut;
        continue;
      }
      f.fate = Swallowed;
      ++timesSwallowed;
      if (f.start < left) SetFree(i - 1);
    }
  }

  void SetFree(std::size_t f) {
    std::size_t first = f;
    while (first > 0 && Y(features_[first - 1].apex) < Y(features_[f].apex) &&
           features_[first - 1].end >= features_[f].start)
      features_[--first].fate = Whole;
    for (std::size_t i = first; i < f; ++i) {
      ++timesSetFree;
      Settle(i, features_[i].start, Y(features_[i].apex), i);
    }
  }

  const std::vector<double>& y_;
  const std::vector<double>& base_;
  double percent_;
  int n_;
  std::vector<Feature> features_;
};

}  // namespace tests
