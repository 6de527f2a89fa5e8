#pragma once
// Kills a process at a chosen system call of SQLite's, so that every state in which a killed
// writer can leave its files is met, whatever else the machine has to do.

#include <cstdint>
#include <functional>

namespace tests {

// The calls that are made before the process dies, and whether half of the next, a write, is
// done. Calls that change no file do not count; nor does syncing one, after which another
// process reads what it would have read before.
struct Moment {
  std::uint32_t calls = 0;
  bool half = false;
};

// Does `work` in a process of its own, killed at that moment. False if the work was done before
// it came.
bool IsKilledAt(Moment moment, const std::function<void()>& work);

}  // namespace tests
