#pragma once
// The options of the commands that write a record in another form.

#include <tool/frame/Options.h>
#include <tool/io/RecordFile.h>
#include <string>

namespace TslTool {

class ConvertOptions {
 public:
  // `what` is converted, such as "tune".
  explicit ConvertOptions(std::string what) : what_(std::move(what)) {}

  void Declare(Options& options);
  // Throws UsageError if a file is missing, or both are one.
  void Require() const;
  const std::string& Input() const { return input_; }
  const std::string& Output() const { return output_; }
  RecordForm Form() const;

 private:
  std::string what_;
  std::string input_;
  std::string output_;
  std::string to_;
};

}  // namespace TslTool
