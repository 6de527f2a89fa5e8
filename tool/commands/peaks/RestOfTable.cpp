#include <tool/commands/peaks/RestOfTable.h>

#include <tool/chain/EvaluateInOrder.h>
#include <tool/frame/Interrupt.h>
#include <tool/io/OpenScans.h>
#include <algorithm>
#include <optional>

namespace TslTool {
namespace {

// The table knows its scans by their numbers. In a run they ascend always.
void RequireAscendingNumbers(const std::string& input, const ScanFilter& wanted, PeakFile& peaks) {
  if (input.empty() || IsDatabase(input)) return;
  const auto source = OpenScans(input);
  source->SetFilter(wanted);
  std::optional<std::uint32_t> last;
  for (Scan scan; source->Next(scan); last = scan.number) {
    ThrowIfInterrupted();
    if (last && scan.number <= *last)
      peaks.RefuseToResume(scan.number, "stands behind scan " + std::to_string(*last) + " in " + input +
                                            ", so the numbers do not tell where to go on");
  }
}

}  // namespace

std::unique_ptr<SpectrumSource> RestOfTable(const std::string& input, const SpectrumChoice& wanted,
                                            const Evaluation& evaluation, const TableEnd& done,
                                            PeakFile& peaks) {
  RequireAscendingNumbers(input, wanted.filter, peaks);
  SpectrumChoice first = wanted;
  first.filter.firstNumber = std::max(wanted.filter.firstNumber, done.first);
  first.filter.lastNumber = std::min(wanted.filter.lastNumber, done.first);
  if (!OpenSpectra(input, first)->Next()) peaks.RefuseToResume(done.first, "is not asked for");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    evaluation.Run(loaded);
    if (!loaded.spectrum->peaks.empty()) peaks.RefuseToResume(loaded.scan, "is asked for, and missing");
    return SpectrumTexts();
  };
  SpectrumChoice before = wanted;
  if (wanted.filter.firstNumber < done.first) {
    before.filter.lastNumber = done.first - 1;
    EvaluateInOrder(*OpenSpectra(input, before), evaluate, [](const SpectrumTexts&) {});
  }
  SpectrumChoice rest = wanted;
  rest.filter.firstNumber = std::max(wanted.filter.firstNumber, done.scan);
  return OpenSpectra(input, rest);
}

}  // namespace TslTool
