#include <tool/io/OpenScans.h>

#include <tool/frame/InputError.h>
#include <tool/io/ByteSource.h>
#include <tool/io/ForeignKinds.h>
#include <tool/io/MzMLFile.h>
#include <tool/io/TextFile.h>
#include <tool/io/TextSource.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace TslTool {

namespace {

bool IsNamedMzML(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  return name.ends_with(".mzml") || name.ends_with(".mzml.gz");
}

std::vector<std::string> OddAboutGzip(const std::string& file) {
  const std::uint64_t behind = VerifyGzip(file);
  if (behind == 0) return {};
  return {std::to_string(behind) + (behind == 1 ? " byte" : " bytes") + " behind the gzip data not read"};
}

}  // namespace

FileKind KindOf(std::string_view head) {
  using namespace std::string_view_literals;
  if (head.empty()) return FileKind::Empty;
  if (head.starts_with("SQLite format 3\0"sv)) return FileKind::Sqlite;
  const std::string text = HeadText(head);
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  return begin != std::string::npos && text[begin] == '<' ? FileKind::Xml : FileKind::Text;
}

FileKind KindOfFile(const std::string& file) { return KindOf(ByteSource(file).Head()); }

bool CanBeReadAgain(const std::string& file) {
  std::error_code unknown;
  return std::filesystem::is_regular_file(file, unknown);
}

bool IsDatabase(const std::string& file) {
  return CanBeReadAgain(file) && KindOfFile(file) == FileKind::Sqlite;
}

ForeignFile OpenForeign(const std::string& file) {
  std::error_code unknown;
  if (std::filesystem::is_directory(file, unknown)) throw InputError(file, "", DescribeFolder(file));
  ByteSource source(file);
  const FileKind kind = KindOf(source.Head());
  if (kind == FileKind::Empty) throw InputError(file, "", "the file is empty");
  if (kind == FileKind::Sqlite)
    throw InputError(file, "", "an SQLite file, as runs are, which is read by its name and not from a pipe");
  const std::string foreign = DescribeForeign(source.Head(), file);
  if (!foreign.empty()) throw InputError(file, "", foreign);
  std::vector<std::string> warnings;
  if (source.IsGzip() && CanBeReadAgain(file)) warnings = OddAboutGzip(file);
  const bool isMzML = kind == FileKind::Xml || IsNamedMzML(file);
  return {std::move(source), isMzML, std::move(warnings)};
}

std::unique_ptr<ScanSource> OpenScans(const std::string& file) {
  ForeignFile opened = OpenForeign(file);
  if (opened.isMzML) return std::make_unique<MzMLFile>(std::move(opened.source), std::move(opened.warnings));
  return std::make_unique<TextFile>(std::move(opened.source), std::move(opened.warnings));
}

}  // namespace TslTool
