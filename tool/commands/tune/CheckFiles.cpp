#include <tool/commands/tune/CheckFiles.h>

#include <fmt/format.h>

#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/CommandLine.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Warning.h>
#include <algorithm>

namespace TslTool {

int CheckFiles(const std::vector<std::string>& files,
               const std::function<std::vector<std::string>(const std::string& file)>& faultsOf) {
  if (files.empty()) throw UsageError("FILE is missing");
  int status = kDone;
  for (const std::string& file : files) {
    try {
      for (const std::string& fault : faultsOf(file)) {
        Print(fmt::format("{}: {}\n", file, fault));
        status = std::max(status, kFailed);
      }
    } catch (const InputError& e) {
      Tell(e.what());
      status = kNotRead;
    }
  }
  return status;
}

}  // namespace TslTool
