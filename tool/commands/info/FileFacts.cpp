#include <tool/commands/info/FileFacts.h>

#include <algorithm>

namespace TslTool {

void FileFacts::Add(const ScanFacts& scan) {
  ascends = ascends && (spectra == 0 || scan.number > lastNumber);
  if (spectra++ == 0) firstNumber = scan.number;
  lastNumber = scan.number;
  ++msLevels[scan.msLevel];
  ++polarities[scan.polarity];
  if (scan.function != 0) ++functions[scan.function];
  ++marked[scan.marked];
  if (scan.judged) ++judged[*scan.judged];
  if (scan.Differs() && differing++ == 0) firstDiffering = scan.number;
  points += scan.points;
  zeros += scan.zeros;
  fewest = std::min(fewest, scan.points);
  most = std::max(most, scan.points);
  rtSeconds.Add(scan.rtSeconds);
  mz.Add(scan.mzFrom);
  mz.Add(scan.mzTo);
  basePeak.Add(scan.basePeak);
  if (scan.points == 0) {
    ++empty;
  } else {
    tic.Add(scan.tic);
  }
}

}  // namespace TslTool
