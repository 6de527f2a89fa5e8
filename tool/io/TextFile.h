#pragma once
// Reads one spectrum from a text file with two columns, m/z and amplitude; the text may be gzip.
//
// The form:
// - a line holds two numbers, separated by blanks or tabs with at most one comma or semicolon among them; one
//   separator may follow the second number. Lines end with LF or CRLF; a UTF-8 mark at the start is skipped.
// - Numbers have a decimal point, never a comma, and may have an exponent; they are finite; m/z is not
// negative.
// - Empty lines, and everything from '#' on, are skipped. The first line that is left may be a header: words
// only.
// - More than two columns are an error: a file with decimal commas and commas between columns would otherwise
// be
//   read as something else, and which of five columns is the amplitude is not for this reader to guess.
// - m/z ascends; Axis.h says which small disorder is put in order, with a warning, and what is an error.
// - In files named *.dta the first line is the precursor's mass and charge and no point; it is left out with
// a
//   warning.
// Errors name file, line and the text that is wrong.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <tool/io/ByteSource.h>
#include <tool/io/Scan.h>

namespace TslTool {

class TextFile : public ScanSource {
 public:
  explicit TextFile(ByteSource source);

  // The one scan has the number 1, the file's name as id, and neither time nor level nor representation.
  bool Next(Scan& scan) override;
  std::optional<std::uint64_t> Count() const override { return 1; }
  std::string Format() const override { return "two-column text"; }
  std::vector<std::string> Warnings() const override { return warnings_; }

 private:
  ByteSource source_;
  bool spent_ = false;
  std::vector<std::string> warnings_;
};

}  // namespace TslTool
