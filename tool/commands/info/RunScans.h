#pragma once
// The scans of a run as they are told of: raw counts on the m/z axis of their tune.

#include <tool/io/RunFile.h>
#include <tool/io/Scan.h>
#include <tool/io/WarningCounts.h>

namespace TslTool {

class RunScans final : public ScanSource {
 public:
  explicit RunScans(const std::string& file) : reader_(file) {}

  // A tune without a usable calibration gives an axis that is even over its mass range, with a warning.
  bool Next(Scan& scan) override;
  std::optional<std::uint64_t> Count() const override { return reader_.Count(); }
  std::string Format() const override { return "run of raw counts"; }
  std::vector<std::string> Warnings() const override { return warnings_.Texts(); }

  const RunReader& Reader() const { return reader_; }

 private:
  void AssignMz(const TslBL::Tune& tune, const TslBL::RawSpectrum& raw, Scan& scan);

  RunReader reader_;
  WarningCounts warnings_;
};

}  // namespace TslTool
