#include <tool/commands/peaks/PeaksInput.h>

#include <fmt/format.h>
#include <unistd.h>

#include <tool/frame/StandardInput.h>
#include <tool/frame/UsageError.h>

namespace TslTool {

std::string PeaksInputPath(const std::string& input, const std::string& command) {
  if (input.empty() && OffersData(STDIN_FILENO))
    throw UsageError(fmt::format(
        "standard input is a pipe or a file, and no INPUT is given; write - to read it, as in '{} -'",
        command));
  return InputPath(input);
}

}  // namespace TslTool
