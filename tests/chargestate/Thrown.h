#pragma once
// The text of the std::runtime_error that `work` throws; "" if it throws none.

#include <stdexcept>
#include <string>

namespace tests {

template <class Work>
std::string Thrown(Work work) {
  try {
    work();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

}  // namespace tests
