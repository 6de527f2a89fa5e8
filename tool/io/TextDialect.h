#pragma once
// How the numbers of a text file are written: what separates the columns, which of them count, what the
// decimal mark is.

#include <cstddef>
#include <optional>
#include <string>

#include <tool/io/ColumnNames.h>
#include <tool/io/TextHead.h>

namespace TslTool {

struct TextDialect {
  // Two numbers a row with decimal points, and any blanks with at most one comma or semicolon among them.
  bool isPlain = false;
  char separator = ' ';     // as in SplitFields; of a plain dialect, the most frequent
  char decimal = '.';       // or ','
  std::size_t columns = 2;  // that a row may have
  ColumnPair pair;
  std::optional<std::size_t> scan;    // the column that numbers spectra
  std::optional<std::size_t> time;    // that of times, which of flight are those of points
  std::string mzName, amplitudeName;  // as the file gives them; empty: it does not
  // Whether a column is taken for what its name does not tell.
  bool isMzGuessed = false, isAmplitudeGuessed = false;
};

// Judged by all lines of the sample, which is not empty: a row that it does not fit is found by who reads it.
// Throws InputError where the columns are not certain.
TextDialect JudgeDialect(const std::string& file, const TextHead& head, const ColumnChoice& choice);

// What is worth telling the user of how a file was read: nothing of two columns without names, separated by
// blanks, tabs or commas.
std::string DescribeDialect(const TextDialect& dialect, const TextHead& head);

// Which columns were taken for what their names do not tell; empty: none.
std::string DescribeGuess(const TextDialect& dialect);

}  // namespace TslTool
