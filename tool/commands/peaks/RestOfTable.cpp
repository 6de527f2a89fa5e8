#include <tool/commands/peaks/RestOfTable.h>

#include <tool/chain/EvaluateInOrder.h>
#include <tool/commands/peaks/RunChain.h>
#include <algorithm>

namespace TslTool {

std::unique_ptr<SpectrumSource> RestOfTable(const std::string& input, const ScanFilter& wanted,
                                            const std::vector<TslBL::CurveEval>& chain, const TableEnd& done,
                                            PeakFile& peaks) {
  ScanFilter first = wanted;
  first.firstNumber = std::max(wanted.firstNumber, done.first);
  first.lastNumber = std::min(wanted.lastNumber, done.first);
  if (!OpenSpectra(input, first)->Next()) peaks.RefuseToResume(done.first, "is not asked for");
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    RunChain(input, chain, loaded);
    if (!loaded.spectrum->peaks.empty()) peaks.RefuseToResume(loaded.scan, "is asked for, and missing");
    return SpectrumTexts();
  };
  ScanFilter before = wanted;
  if (wanted.firstNumber < done.first) {
    before.lastNumber = done.first - 1;
    EvaluateInOrder(*OpenSpectra(input, before), evaluate, [](const SpectrumTexts&) {});
  }
  ScanFilter rest = wanted;
  rest.firstNumber = std::max(wanted.firstNumber, done.scan);
  return OpenSpectra(input, rest);
}

}  // namespace TslTool
