#pragma once
// Which scans of the input a command takes.

#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <tool/io/Scan.h>
#include <string>

namespace TslTool {

struct ScanOptions {
  std::string scan;
  std::string rt;
  std::string columns;

  void Declare(Options& options) {
    options.Value("--scan N|A-B", scan, "Only scan N, or scans A to B");
    options.Value("--rt A-B", rt, "Only scans from A to B seconds of retention time");
    DeclareColumns(options);
  }
  void DeclareColumns(Options& options) {
    options.Value("--columns MZ,AMPLITUDE", columns,
                  "Columns of a text file, by name or number: mass,intensity or 2,3");
  }
  ScanFilter Filter() const {
    ScanFilter filter;
    filter.columns = ParseColumnChoice("--columns", columns);
    if (!scan.empty()) {
      const CountRange range = ParseCountRange("--scan", scan);
      filter.firstNumber = range.from;
      filter.lastNumber = range.to;
    }
    if (!rt.empty()) {
      const RealRange range = ParseRealRange("--rt", rt);
      filter.rtFrom = range.from;
      filter.rtTo = range.to;
    }
    return filter;
  }
};

}  // namespace TslTool
