#pragma once
// An mzML file while its spectra are made. It can be written only when the last of them is there, as its head
// tells how many there are.

#include <tool/io/IndexedMzML.h>
#include <tool/mzml/MzMLHeader.h>
#include <tool/mzml/SpectrumElement.h>
#include <atomic>
#include <optional>
#include <string>

namespace TslTool {

class MzMLDocument {
 public:
  // An element <spectrum> of it. On any number of threads. Throws std::runtime_error as SpectrumElement does.
  std::string Element(const LoadedSpectrum& loaded, const SpectrumArrays& arrays);

  // The elements in their order; they wait in the folder of `output`.
  void Add(const Output& output, const std::string& element);
  void WriteTo(Output& output, const MzMLOrigin& origin);

 private:
  MzMLContent Content() const;

  std::optional<IndexedMzML> spectra_;
  // A bit for each kind of spectra, of representations and of ids that were seen.
  std::atomic<unsigned> types_ = 0;
  std::atomic<unsigned> representations_ = 0;
  std::atomic<unsigned> ids_ = 0;
};

}  // namespace TslTool
