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
  std::optional<std::uint32_t> function;
  bool profile = false;
  bool centroid = false;
  bool strict = false;

  void Declare(Options& options);
  // Those alone that choose scans by what they are.
  void DeclareFilter(Options& options);
  void DeclareColumns(Options& options);
  // Throws UsageError.
  SpectrumChoice Choice() const;
  // The same for what is made of many spectra: those of a calibration are no part of it unless their function
  // was asked for.
  SpectrumChoice ChoiceOfSample() const;
};

}  // namespace TslTool
