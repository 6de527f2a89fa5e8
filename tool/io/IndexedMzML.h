#pragma once
// An mzML document with an index, whose spectra come one after the other and whose head, which tells how many
// there are, is known behind the last of them. Until then they wait on the disk; memory does not grow with
// their number. Source: Proteomics Standards Initiative, mzML 1.1.0, with the wrapper schema mzML1.1.1_idx.

#include <tool/frame/Output.h>
#include <tool/frame/Spool.h>
#include <cstdint>
#include <string>
#include <string_view>

namespace TslTool {

class IndexedMzML {
 public:
  // The levels of elements around a spectrum.
  static constexpr unsigned kSpectrumDepth = 4;

  // `folder` is where the spectra wait.
  explicit IndexedMzML(const std::string& folder) : spectra_(folder), index_(folder) {}

  // The text of an element <spectrum>, whole lines, whose first attribute is the id; its index is added.
  void Add(std::string_view spectrum);
  std::uint64_t Count() const { return count_; }

  // Writes the document. `head` are its lines to the start tag of the list of spectra.
  void WriteTo(Output& output, const std::string& head);

 private:
  Spool spectra_;
  Spool index_;  // a line for each spectrum: its offset in spectra_, a tab, its id as it is written
  std::uint64_t count_ = 0;
};

}  // namespace TslTool
