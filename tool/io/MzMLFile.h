#pragma once
// Reads spectra of mzML files (PSI-MS mzML 1.1), plain or gzip, scan by scan.
//
// Arrays: 32 and 64 bit floats, plain, zlib, MS-Numpress linear, pic and slof (also inside zlib). The file's
// own byte index is not used, so a wrong one does no harm; it costs one pass over the text that precedes the
// scans asked for. Chromatograms are passed over. Terms of the vocabulary that are younger than the decoder
// are passed over, except in the m/z and intensity arrays, where they are an error: they change what the
// bytes mean.
//
// A <spectrum> without arrays and of length 0 is a scan of 0 points. Spectra with an intensity but no m/z
// array (light absorption spectra of a diode array) are left out with a warning.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <tool/io/ByteSource.h>
#include <tool/io/Scan.h>

namespace TslTool {

class MzMLFile : public ScanSource {
 public:
  // Reads up to the list of spectra. Throws InputError.
  explicit MzMLFile(ByteSource source);
  ~MzMLFile() override;

  bool Next(Scan& scan) override;
  std::optional<std::uint64_t> Count() const override;
  std::string Format() const override;
  std::vector<std::string> Warnings() const override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace TslTool
