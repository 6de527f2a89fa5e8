#include <tool/commands/peaks/PeaksInput.h>

#include <unistd.h>

#include <tool/frame/StandardInput.h>
#include <tool/frame/UsageError.h>

namespace TslTool {

std::string PeaksInputPath(const std::string& input) {
  if (input.empty() && OffersData(STDIN_FILENO))
    throw UsageError(
        "standard input is a pipe or a file, and no INPUT is given; write - to read it, as in 'tslbl peaks "
        "-'");
  return InputPath(input);
}

}  // namespace TslTool
