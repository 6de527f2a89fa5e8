#pragma once
// A stand-in for the parallel library, for the thread sanitizer alone.
//
// The packaged library is not built with the sanitizer, which then misses how tasks are
// handed over and reports a race at every one of them. Put before the library on the include
// path, these headers run the same bodies under the same contract on plain threads: ranges
// are split as long as they are divisible, a body may be split off another while that one
// works, and two bodies are joined when both are finished. What is then reported is a race
// of ours.
//
//   cmake -DTSLBL_SANITIZE=thread -DCMAKE_CXX_FLAGS=-I$PWD/tests/tsan ...

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <thread>

namespace tbb {

class split {};

class simple_partitioner {};
class auto_partitioner {};
class affinity_partitioner {
 public:
  std::size_t uses = 0;  // written without a lock, so that sharing one is seen
};

template <class Value>
class blocked_range {
 public:
  blocked_range(Value begin, Value end, std::size_t grain = 1) : begin_(begin), end_(end), grain_(grain) {}
  blocked_range(blocked_range& whole, split)
      : begin_(whole.begin_ + (whole.end_ - whole.begin_) / 2), end_(whole.end_), grain_(whole.grain_) {
    whole.end_ = begin_;
  }
  Value begin() const { return begin_; }
  Value end() const { return end_; }
  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  bool empty() const { return !(begin_ < end_); }
  bool is_divisible() const { return grain_ < size(); }

 private:
  Value begin_;
  Value end_;
  std::size_t grain_;
};

namespace stand_in {

inline thread_local int concurrency = 0;  // of the arena that the thread is in; 0 for none
inline std::atomic<int> threads = 0;

inline int Machine() { return static_cast<int>(std::max(2u, std::thread::hardware_concurrency())); }

// Counts without ordering anything, which would hide races.
inline bool TakeThread() {
  if (threads.fetch_add(1, std::memory_order_relaxed) + 1 < concurrency) return true;
  threads.fetch_sub(1, std::memory_order_relaxed);
  return false;
}
inline void GiveThreadBack() { threads.fetch_sub(1, std::memory_order_relaxed); }

// The right half goes to a thread of its own while there are fewer than the arena has; not
// for the smallest parts, since threads are dear.
template <class Range, class Body>
void Reduce(Range& range, Body& body, int depth) {
  constexpr int kDeepest = 6;
  if (!range.is_divisible()) return body(range);
  Range right(range, split());
  if (depth >= kDeepest || !TakeThread()) {
    Reduce(range, body, depth + 1);
    return Reduce(right, body, depth + 1);
  }
  std::unique_ptr<Body> part;
  std::thread other([&right, &body, &part, depth, here = concurrency] {
    concurrency = here;
    part = std::make_unique<Body>(body, split());
    Reduce(right, *part, depth + 1);
  });
  Reduce(range, body, depth + 1);
  other.join();
  GiveThreadBack();
  body.join(*part);
}

}  // namespace stand_in

template <class Range, class Body>
void parallel_reduce(const Range& range, Body& body, const simple_partitioner&) {
  Range whole = range;
  stand_in::Reduce(whole, body, 0);
}
template <class Range, class Body>
void parallel_reduce(const Range& range, Body& body, const auto_partitioner&) {
  parallel_reduce(range, body, simple_partitioner());
}
template <class Range, class Body>
void parallel_reduce(const Range& range, Body& body, affinity_partitioner& partitioner) {
  ++partitioner.uses;
  parallel_reduce(range, body, simple_partitioner());
  ++partitioner.uses;
}

}  // namespace tbb
