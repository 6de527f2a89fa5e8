#pragma once
// Reads one spectrum from a text file with columns of m/z and amplitude; the text may be gzip.
//
// The form is judged by up to 1000 rows and holds for every row: one that breaks it is an error with its
// line.
// - Text is UTF-8 or another encoding that contains ASCII, or UTF-16, with or without a mark. Lines end with
// LF, CRLF or
//   CR and have at most 64 KiB.
// - Empty lines and rows of separators only are skipped, everything from '#' on, and lines that begin with
// '%', "//" or, where semicolons do not
//   separate, ';'.
// - Any words may come first. Numbers begin at the first line of nothing but numbers, or at one with a number
// in the
//   columns that the line of names above it gives.
// - Columns are separated by tabs, semicolons, commas or blanks. Fields may stand in double quotes.
// - Numbers have a decimal point, or a decimal comma where that is certain: where tabs, semicolons, blanks or
// quotes
//   separate, and not every comma in the file may mark thousands ("1,234"). "100,5" alone is two columns.
//   They may have an exponent and are finite, never hexadecimal, never with marks between thousands; m/z is
//   not negative.
// - Two numbers with decimal points may have any blanks between them with at most one comma or semicolon
// among them, row
//   by row.
// - The line of names, the last of words or of comments, says which columns are m/z and amplitude
// (ColumnNames.h), or
//   the filter's choice does. Without either, two columns are m/z and amplitude, with a warning where their
//   names do not tell; of more than two it is an error.
// - A column that is called scan or spectrum has one value: there is one spectrum.
// - m/z ascends, or is put in order with a warning where TextAxis.h is certain that it is one spectrum.
// - In files named *.dta the first row is the precursor's mass and charge and no point; it is left out with a
//   warning.
// Errors name file, line and the text that is wrong. Notes tell what was taken for what, unless it is two
// columns without words, separated by blanks, tabs or commas.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <tool/io/ByteSource.h>
#include <tool/io/Scan.h>

namespace TslTool {

class TextFile : public ScanSource {
 public:
  // `warnings` are of the file as a whole.
  explicit TextFile(ByteSource source, std::vector<std::string> warnings = {});

  // The one scan has the number 1, the file's name as id, and neither time nor level nor representation.
  bool Next(Scan& scan) override;
  std::optional<std::uint64_t> Count() const override { return 1; }
  std::string Format() const override { return format_; }
  std::vector<std::string> Warnings() const override { return warnings_; }
  std::vector<std::string> Notes() const override { return notes_; }

 private:
  bool HasColumns() const override { return true; }

  ByteSource source_;
  bool spent_ = false;
  std::string format_ = "two-column text";
  std::vector<std::string> warnings_;
  std::vector<std::string> notes_;
};

}  // namespace TslTool
