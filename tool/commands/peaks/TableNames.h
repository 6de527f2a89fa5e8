#pragma once
// Where the tables of several inputs go.

#include <string>
#include <vector>

namespace TslTool {

struct NamedTable {
  std::string input;
  std::string table;
};

// Makes a folder unless it is there. Throws InputError, as where the folder that it should lie in is missing.
void MakeFolder(const std::string& folder);

// FOLDER/STEM.EXTENSION for each input; the format "table" has the extension txt, "mzml" mzML, the others
// their own name. Throws UsageError for "-" and for two inputs whose tables would be one: which is which
// could not be told later.
std::vector<NamedTable> NameTables(const std::vector<std::string>& inputs, const std::string& folder,
                                   const std::string& format);

// Throws UsageError if a table, or the part that it is until it is whole, is one of the files that are read.
void RequireNoneRead(const std::vector<NamedTable>& tables, const std::vector<std::string>& read);

}  // namespace TslTool
