#pragma once
// Reads spectra of mzML files (PSI-MS mzML 1.1 and 1.0), plain or gzip, scan by scan.
//
// Arrays: MzMLArray.h. They may stand in any order and among others, which are passed over. The file's own
// byte index is not used, so a wrong one does no harm; it costs one pass over the text that precedes the
// scans asked for. Chromatograms are counted and passed over. Terms of the vocabulary that are not known are
// passed over, except in the m/z and intensity arrays, where they are an error: they change what the bytes
// mean. Elements may have a namespace prefix; terms may stand in referenced groups.
//
// A <spectrum> without arrays and of length 0 is a scan of 0 points. Spectra with an intensity but no m/z
// array (light absorption spectra of a diode array) are left out with a warning. What is wrong with the
// values of one spectrum is a defect of it (Scan.h) and no error: values that are not finite, arrays of
// another length than announced, points of several ion mobilities. A wrong encodedLength is told and the text
// read as it is, since zlib and plain data show by themselves whether they are whole; Numpress data do not,
// and are refused.

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
  // Reads up to the list of spectra. `warnings` are of the file as a whole. Throws InputError.
  explicit MzMLFile(ByteSource source, std::vector<std::string> warnings = {});
  ~MzMLFile() override;

  bool Next(Scan& scan) override;
  std::optional<std::uint64_t> Count() const override;
  std::string Format() const override;
  IdFormat Ids() const override;
  Chromatograms PassedOver() const override;
  std::vector<std::string> Warnings() const override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace TslTool
