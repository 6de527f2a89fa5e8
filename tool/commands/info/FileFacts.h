#pragma once
// What the spectra of a file have in common, gathered one by one.

#include <tool/commands/info/ScanFacts.h>
#include <cstdint>
#include <limits>
#include <map>

namespace TslTool {

// Of the values so far; those that are no number do not count.
struct Span {
  double from = std::numeric_limits<double>::infinity();
  double to = -std::numeric_limits<double>::infinity();

  bool IsKnown() const { return from <= to; }
  void Add(double value) {
    from = value < from ? value : from;
    to = value > to ? value : to;
  }
};

struct FileFacts {
  std::uint64_t spectra = 0;
  std::uint64_t empty = 0;
  std::uint32_t firstNumber = 0;
  std::uint32_t lastNumber = 0;
  bool ascends = true;  // each number is higher than the one before it
  std::map<int, std::uint64_t> msLevels;
  std::map<int, std::uint64_t> polarities;
  std::map<std::uint32_t, std::uint64_t> functions;  // of the spectra that tell one
  std::map<Scan::Representation, std::uint64_t> marked;
  std::map<Scan::Representation, std::uint64_t> judged;  // of those with 3 points or more
  std::uint64_t differing = 0;                           // whose points speak against their mark
  std::uint32_t firstDiffering = 0;
  std::uint64_t points = 0;
  std::uint64_t zeros = 0;
  std::uint64_t fewest = std::numeric_limits<std::uint64_t>::max();  // points of a spectrum
  std::uint64_t most = 0;
  Span mz;
  Span rtSeconds;
  Span tic;
  Span basePeak;

  void Add(const ScanFacts& scan);
};

}  // namespace TslTool
