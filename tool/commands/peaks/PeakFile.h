#pragma once
// The result of the commands peaks and overlap: the parts of the spectra in their order, in a file or on
// standard output. A table of the form "tsv" in a file can be resumed after a process was
// killed or interrupted.

#include <tool/commands/peaks/SpectrumWriter.h>
#include <tool/commands/peaks/TableEnd.h>
#include <tool/frame/Output.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace TslTool {

class PeakFile {
 public:
  // An empty path or "-" means standard output. `writer` is that of the format.
  PeakFile(std::unique_ptr<SpectrumWriter> writer, const std::string& format, const std::string& path);

  static bool CanResume(const std::string& format, const std::string& path);
  // Whether a file holds a table that no process has left unfinished.
  static bool IsWhole(const std::string& format, const std::string& path);
  // Continues after the scans that an earlier process finished, if there are any. The last of
  // these is to be written again, as proof that input and chain are still the same. Throws
  // InputError.
  const std::optional<TableEnd>& Resume();
  // What the earlier process wrote stays as it is. Throws InputError with that reason.
  [[noreturn]] void RefuseToResume(std::uint32_t scan, const std::string& reason);

  // Where the peaks come from; before the first part.
  void Describe(const PeakOrigin& origin) { writer_->Describe(origin); }
  std::string Part(const LoadedSpectrum& loaded) const;
  // Throws InputError if the first part after Resume is not what the earlier process wrote.
  void Write(const std::string& part);
  void Commit();

  // Leaves what was done to a later process. Returns the name of its file; empty if nothing
  // was done or it cannot be resumed.
  std::string KeepForLater();

 private:
  void RequireSame(const std::string& part);

  std::unique_ptr<SpectrumWriter> writer_;
  Output output_;
  std::optional<TableEnd> resumed_;
  bool first_ = true;
};

}  // namespace TslTool
