#pragma once
// What the user asks of the command peaks.

#include <tool/chain/ChainOptions.h>
#include <tool/io/ScanOptions.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct PeaksArguments {
  std::vector<std::string> inputs;  // as given, for several tables
  std::string input;                // the one to evaluate, as a path
  std::string list;
  std::string outputDir;
  ScanOptions scans;
  ChainOptions chain;
  std::optional<double> scale;       // of the amplitudes
  std::optional<double> minRise;     // of peaks, in standard deviations
  double usualRise = 2.5;            // if it is not given
  bool barsBumps = true;             // of noise, where they are as wide as peaks, unless a ratio is given
  std::optional<double> noiseLimit;  // in times the noise of counts; 2 if it is not given
  bool showChain = false;
  bool resume = false;
  bool quiet = false;
  std::string format = "table";
  std::string output;
  std::string curve;
  std::string plot;
  std::string plotDir;
  std::string view;
  std::optional<std::uint32_t> threads;
};

}  // namespace TslTool
