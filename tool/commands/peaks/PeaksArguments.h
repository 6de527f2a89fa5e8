#pragma once
// What the user asks of the command peaks.

#include <tool/chain/ChainOptions.h>
#include <tool/io/ScanOptions.h>
#include <cstdint>
#include <optional>
#include <string>

namespace TslTool {

struct PeaksArguments {
  std::string input;
  ScanOptions scans;
  ChainOptions chain;
  bool showChain = false;
  bool resume = false;
  bool quiet = false;
  std::string format = "table";
  std::string output;
  std::string curve;
  std::optional<std::uint32_t> threads;
};

}  // namespace TslTool
