#include <tool/commands/tune/ConvertOptions.h>

#include <fmt/format.h>

#include <tool/commands/tune/FormOption.h>
#include <tool/frame/Output.h>
#include <tool/frame/UsageError.h>

namespace TslTool {

void ConvertOptions::Declare(Options& options) {
  options.Value("FILE", input_, fmt::format("The {} to convert", what_));
  options.Value("-o,--output FILE", output_, "Where it goes");
  DeclareForm(options, to_);
}

void ConvertOptions::Require() const {
  if (input_.empty()) throw UsageError("FILE is missing");
  if (output_.empty()) throw UsageError("--output is missing");
  if (SameFile(input_, output_))
    throw UsageError(fmt::format("--output: {} is the {} to be converted", output_, what_));
}

RecordForm ConvertOptions::Form() const { return FormFor(to_, output_); }

}  // namespace TslTool
