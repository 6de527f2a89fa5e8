#pragma once
// What the user asks of the command chrom.

#include <tool/chain/ChainOptions.h>
#include <tool/io/ScanOptions.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct ChromArguments {
  std::string input;
  std::vector<std::string> ranges;
  std::vector<std::string> definitions;
  std::string curvesFrom;  // a document with both
  bool isMean = false;
  bool isStored = false;
  std::string only;  // which of several curves of a file, by name or number
  ScanOptions scans;
  std::string columns;
  std::string timeUnit;
  ChainOptions chain{PresetsForChromatograms()};
  std::string integrate;
  std::string format = "table";
  std::string output;
  std::string points;
  std::string plot;
  bool quiet = false;
  std::optional<std::uint32_t> threads;
};

}  // namespace TslTool
