#pragma once
// See parallel_reduce.h.

#include <tbb/parallel_reduce.h>

#include <mutex>
#include <utility>
#include <vector>

namespace tbb {

class task_scheduler_observer;

class task_arena {
 public:
  static constexpr int automatic = -1;

  explicit task_arena(int threads = automatic)
      : threads_(threads == automatic ? stand_in::Machine() : threads) {}

  int max_concurrency() const { return threads_; }
  template <class Function>
  void execute(Function function) {
    NotifyObservers();
    const int outside = std::exchange(stand_in::concurrency, threads_);
    function();
    stand_in::concurrency = outside;
  }

 private:
  friend class task_scheduler_observer;
  void NotifyObservers();

  int threads_;
  std::mutex mutex_;
  std::vector<task_scheduler_observer*> observers_;
};

namespace this_task_arena {
inline int max_concurrency() {
  return stand_in::concurrency > 0 ? stand_in::concurrency : stand_in::Machine();
}
}  // namespace this_task_arena

// Told of each call that enters the arena.
class task_scheduler_observer {
 public:
  explicit task_scheduler_observer(task_arena& arena) : arena_(arena) {}
  virtual ~task_scheduler_observer() = default;
  virtual void on_scheduler_entry(bool) {}
  void observe(bool on) {
    const std::lock_guard lock(arena_.mutex_);
    std::erase(arena_.observers_, this);
    if (on) arena_.observers_.push_back(this);
  }

 private:
  task_arena& arena_;
};

inline void task_arena::NotifyObservers() {
  const std::lock_guard lock(mutex_);
  for (task_scheduler_observer* observer : observers_) observer->on_scheduler_entry(false);
}

}  // namespace tbb
