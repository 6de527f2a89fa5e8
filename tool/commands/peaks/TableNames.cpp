#include <tool/commands/peaks/TableNames.h>

#include <fmt/format.h>
#include <sys/stat.h>

#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/io/InputPath.h>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace TslTool {
namespace {

namespace fs = std::filesystem;
using FileId = std::pair<dev_t, ino_t>;

std::string ExtensionFor(const std::string& format) {
  if (format == "table") return "txt";
  return format == "mzml" ? "mzML" : format;
}

std::optional<FileId> IdOf(const std::string& file) {
  struct stat there = {};
  if (stat(file.c_str(), &there) != 0) return std::nullopt;
  return FileId(there.st_dev, there.st_ino);
}

}  // namespace

void MakeFolder(const std::string& folder) {
  std::error_code failure;
  fs::create_directory(folder, failure);
  if (failure) throw InputError(folder, "", "cannot be made a folder: " + failure.message());
}

std::vector<NamedTable> NameTables(const std::vector<std::string>& inputs, const std::string& folder,
                                   const std::string& format) {
  std::vector<NamedTable> tables;
  std::map<std::string, std::string> inputOf;
  for (const std::string& input : inputs) {
    if (input == "-") throw UsageError("standard input has no name for its table; evaluate it alone");
    const std::string table = (fs::path(folder) / (StemOf(input) + '.' + ExtensionFor(format))).string();
    const auto [other, isNew] = inputOf.emplace(table, input);
    if (!isNew)
      throw UsageError(fmt::format("{} and {} would have one table, {}; evaluate them into two folders",
                                   other->second, input, table));
    tables.push_back({input, table});
  }
  return tables;
}

// By what the files are and not by their names, once each: there may be thousands.
void RequireNoneRead(const std::vector<NamedTable>& tables, const std::vector<std::string>& read) {
  std::map<FileId, std::string> names;
  for (const std::string& file : read)
    if (const auto id = IdOf(file)) names.emplace(*id, file);
  for (const NamedTable& table : tables)
    for (const std::string& written : {table.table, table.table + ".part"})
      if (const auto id = IdOf(written); id && names.contains(*id))
        throw UsageError(
            fmt::format("--output-dir: {} would be written over {}, which is read", written, names.at(*id)));
}

}  // namespace TslTool
