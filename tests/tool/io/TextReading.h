#pragma once
// Reads a text as the one spectrum of a file.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>

namespace tests {

struct ReadText {
  TslTool::Scan scan;
  std::vector<std::string> warnings;
  std::vector<std::string> notes;
  std::string format;
};

// `columns` as with --columns.
inline ReadText Read(const std::string& text, const std::string& name = "profile.txt",
                     const std::string& columns = "") {
  const TempFile file(name, text);
  const auto source = TslTool::OpenScans(file.Path());
  TslTool::ScanFilter filter;
  filter.columns = TslTool::ParseColumnChoice("--columns", columns);
  source->SetFilter(filter);
  ReadText result;
  EXPECT_TRUE(source->Next(result.scan));
  TslTool::Scan none;
  EXPECT_FALSE(source->Next(none));
  result.warnings = source->Warnings();
  result.notes = source->Notes();
  result.format = source->Format();
  return result;
}

// "PLACE: REASON", empty if the text is read.
inline std::string ErrorOf(const std::string& text, const std::string& name = "profile.txt",
                           const std::string& columns = "") {
  try {
    Read(text, name, columns);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

// ASCII as UTF-16.
inline std::string Utf16(const std::string& text, bool bigEndian, bool mark) {
  std::string units;
  if (mark) units = bigEndian ? "\xfe\xff" : "\xff\xfe";
  for (const char c : text) {
    if (bigEndian) units.push_back('\0');
    units.push_back(c);
    if (!bigEndian) units.push_back('\0');
  }
  return units;
}

}  // namespace tests
