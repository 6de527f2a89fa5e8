#include <tool/commands/results/RunGrowth.h>

#include <fmt/format.h>

#include <tool/io/RunFile.h>

namespace TslTool {
namespace {

std::uint64_t ScansOf(const std::string& run) { return run.empty() ? 0 : RunReader(run).Count(); }

}  // namespace

RunGrowth::RunGrowth(const std::string& run) : run_(run), before_(ScansOf(run)) {}

std::vector<std::string> RunGrowth::Warnings() const {
  const std::uint64_t now = ScansOf(run_);
  if (now == before_) return {};
  return {
      fmt::format("the run grew from {} to {} scans while it was read: its chromatograms and its spectra "
                  "may end at different ones; write the document again when it has ended",
                  before_, now)};
}

}  // namespace TslTool
