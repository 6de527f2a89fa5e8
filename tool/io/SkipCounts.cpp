#include <tool/io/SkipCounts.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace TslTool {

std::string SkipCounts::Text() const {
  if (skipped_ == 0) return "";
  return fmt::format("{} of {} spectra skipped: {}", skipped_, skipped_ + taken_,
                     fmt::join(reasons_.Counts(), ", "));
}

}  // namespace TslTool
