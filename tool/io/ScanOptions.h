#pragma once
// Which spectra of the input a command takes, and as what.

#include <tool/frame/Options.h>
#include <tool/io/SpectrumSource.h>
#include <optional>
#include <string>

namespace TslTool {

struct ScanOptions {
  std::string scan;
  std::string rt;
  std::string columns;
  std::optional<std::uint32_t> msLevel;
  std::string polarity;
  bool profile = false;
  bool centroid = false;
  bool strict = false;

  void Declare(Options& options);
  // Those alone that choose scans by what they are.
  void DeclareFilter(Options& options);
  void DeclareColumns(Options& options);
  // Throws UsageError.
  SpectrumChoice Choice() const;
};

}  // namespace TslTool
