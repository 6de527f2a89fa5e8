#pragma once
// The formats of a command's result, each with its writer.

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

template <class Writer>
class WriterFormats {
 public:
  // Adds a format behind the others.
  template <class Format>
  WriterFormats& With(const std::string& name) {
    names_.push_back(name);
    makers_.push_back([]() -> std::unique_ptr<Writer> { return std::make_unique<Format>(); });
    return *this;
  }

  const std::vector<std::string>& Names() const { return names_; }

  std::unique_ptr<Writer> Make(const std::string& name) const {
    for (std::size_t i = 0; i < names_.size(); ++i)
      if (names_[i] == name) return makers_[i]();
    throw std::logic_error("unknown format " + name);
  }

 private:
  std::vector<std::string> names_;
  std::vector<std::unique_ptr<Writer> (*)()> makers_;
};

}  // namespace TslTool
