#pragma once
// What the check commands do: a line on standard output for each problem of each file.

#include <functional>
#include <string>
#include <vector>

namespace TslTool {

// The exit status: kDone without problems, kFailed with some, and kNotRead if `faultsOf` throws InputError
// for a file, which is told and does not keep the others from being checked. Throws UsageError without files.
int CheckFiles(const std::vector<std::string>& files,
               const std::function<std::vector<std::string>(const std::string& file)>& faultsOf);

}  // namespace TslTool
