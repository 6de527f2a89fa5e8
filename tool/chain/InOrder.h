#pragma once
// Work done on several threads, and its results handed on in their order.

#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include <tool/chain/Threads.h>
#include <tool/frame/Interrupt.h>
#include <cstdint>
#include <exception>
#include <functional>
#include <vector>

namespace TslTool {

// A piece of work in the pipeline.
template <class Result>
struct WorkItem {
  std::function<Result()> work;
  Result result;
  std::exception_ptr failure;

  // Runs `step`; a failure travels on with the item, as those before it are to be used first.
  template <class Step>
  void Try(Step step) {
    try {
      step();
    } catch (...) {
      failure = std::current_exception();
    }
  }
};

// Takes work into a ring of as many items as may be in work. The pipeline only passes pointers: when a
// failure ends it, nothing that it holds is left without an owner.
template <class Result>
class WorkReader {
 public:
  using Next = std::function<std::function<Result()>()>;

  WorkReader(const Next& next, std::size_t inWork) : source_(next), items_(inWork) {}

  WorkItem<Result>* operator()(tbb::flow_control& control) {
    ThrowIfInterrupted();
    WorkItem<Result>& item = items_[next_++ % items_.size()];
    item = {};
    if (!ended_) item.Try([&] { item.work = source_(); });
    const bool none = ended_ || (!item.work && !item.failure);
    ended_ = none || item.failure;
    if (none) control.stop();
    return &item;
  }

 private:
  const Next& source_;
  std::vector<WorkItem<Result>> items_;
  std::size_t next_ = 0;
  bool ended_ = false;
};

// Asks `next` for work, one piece after the other until it returns none, runs each piece once, on any of the
// threads that the process-wide threading parameters allow, and gives the results to `use`, one at a time and
// in the order in which the work came. At most two pieces a thread are in work. The first failure in that
// order is thrown, once all before it is used; an interrupt at once. Returns the number of results.
template <class Result>
std::uint64_t WorkInOrder(const std::function<std::function<Result()>()>& next,
                          const std::function<void(Result&)>& use) {
  using Item = WorkItem<Result>;
  using tbb::filter_mode;
  std::uint64_t results = 0;
  const int threads = ThreadsAllowed();
  const std::size_t inWork = 2 * static_cast<std::size_t>(threads);
  WorkReader<Result> reader(next, inWork);
  const auto read = [&reader](tbb::flow_control& control) { return reader(control); };
  const auto work = [](Item* item) {
    if (!item->failure) item->Try([item] { item->result = item->work(); });
    item->work = nullptr;
    return item;
  };
  const auto finish = [&](Item* item) {
    ThrowIfInterrupted();
    if (item->failure) std::rethrow_exception(item->failure);
    use(item->result);
    ++results;
  };
  tbb::task_arena(threads).execute([&] {
    tbb::parallel_pipeline(inWork, tbb::make_filter<void, Item*>(filter_mode::serial_in_order, read) &
                                       tbb::make_filter<Item*, Item*>(filter_mode::parallel, work) &
                                       tbb::make_filter<Item*, void>(filter_mode::serial_in_order, finish));
  });
  return results;
}

}  // namespace TslTool
