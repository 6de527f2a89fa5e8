#pragma once
// An output that knows how much was written and what it sums up to, for documents that tell it of themselves.

#include <tool/frame/Output.h>
#include <tool/io/Sha1.h>
#include <cstdint>
#include <string>
#include <string_view>

namespace TslTool {

class SummedOutput {
 public:
  explicit SummedOutput(Output& output) : output_(output) {}

  void Write(std::string_view text) {
    output_.Write(text);
    sum_.Add(text);
    size_ += text.size();
  }
  std::uint64_t Size() const { return size_; }
  std::string Sum() { return sum_.Text(); }  // once, at the end

 private:
  Output& output_;
  Sha1 sum_;
  std::uint64_t size_ = 0;
};

}  // namespace TslTool
