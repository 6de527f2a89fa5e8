#include <tool/frame/DistinctFiles.h>

#include <tool/frame/Output.h>
#include <tool/frame/UsageError.h>

namespace TslTool {

void RequireDistinct(const std::string& option, const std::string& file, const std::string& other,
                     const std::string& what) {
  if (!IsStandardOutput(file) && !other.empty() && SameFile(file, other))
    throw UsageError(option + ": " + file + " is " + what);
}

}  // namespace TslTool
