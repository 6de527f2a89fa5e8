#include <tool/io/ForeignKinds.h>

#include <tool/io/TextSource.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace TslTool {

namespace {

using namespace std::string_view_literals;

constexpr auto kConvert = "convert it to mzML with ProteoWizard's msconvert"sv;
constexpr auto kUnpack = "unpack it first"sv;
constexpr auto kExport = "export the sheet as CSV"sv;
constexpr auto kWrite = "export columns of m/z and amplitude"sv;
constexpr auto kExportAgain = "export it as mzML or as columns from the software that wrote it"sv;
constexpr auto kConvertOld = "convert it to mzML with OpenMS's FileConverter"sv;

// What a kind of file shows; all that is given must be there. With nothing but an ending it is one by its
// name.
struct ForeignKind {
  std::string_view what;
  std::string_view wayOut;
  std::string_view bytes = {};  // stand `at` this place
  std::size_t at = 0;
  std::string_view begins = {};  // the text behind blanks, in small letters
  std::string_view line = {};    // some line begins with it
  std::string_view root = {};    // the first element of XML
  std::string_view inside = {};  // stands somewhere in the text
  std::string_view ending = {};  // of the name, in small letters
  std::string_view entry = {};   // a folder holds it, in small letters

  bool ShowsContent() const {
    return !(bytes.empty() && begins.empty() && line.empty() && root.empty() && inside.empty());
  }
};

// Of SQLite files, by name.
constexpr ForeignKind kDatabases[] = {
    {.what = "the index of a Bruker data folder",
     .wayOut = "convert the folder to mzML with ProteoWizard's msconvert",
     .ending = ".tdf"},
    {.what = "the index of a Bruker data folder",
     .wayOut = "convert the folder to mzML with ProteoWizard's msconvert",
     .ending = ".tsf"},
    {.what = "mzDB", .wayOut = "convert it to mzML with the tools of mzDB", .ending = ".mzdb"},
    {.what = "a SCIEX data file", .wayOut = kConvert, .ending = ".wiff2"},
};

// The first that fits counts.
constexpr ForeignKind kKinds[] = {
    // Packed
    {.what = "an Excel sheet", .wayOut = kExport, .bytes = "PK\3\4", .ending = ".xlsx"},
    {.what = "an Excel sheet", .wayOut = kExport, .bytes = "PK\3\4", .ending = ".xlsm"},
    {.what = "an OpenDocument sheet", .wayOut = kExport, .bytes = "PK\3\4", .ending = ".ods"},
    {.what = "an Excel sheet", .wayOut = kExport, .bytes = "PK\3\4", .inside = "[Content_Types].xml"},
    {.what = "a zip archive", .wayOut = kUnpack, .bytes = "PK\3\4"},
    {.what = "a zip archive without files", .wayOut = kUnpack, .bytes = "PK\5\6"},
    {.what = "a tar archive", .wayOut = kUnpack, .bytes = "ustar", .at = 257},
    {.what = "a file packed with gzip twice", .wayOut = kUnpack, .bytes = "\x1f\x8b\x08"},
    {.what = "a file packed with compress", .wayOut = kUnpack, .bytes = "\x1f\x9d"},
    {.what = "a file packed with bzip2", .wayOut = kUnpack, .bytes = "1AY&SY", .at = 4},
    {.what = "a file packed with xz",
     .wayOut = kUnpack,
     .bytes = "\xfd"
              "7zXZ\0"sv},
    {.what = "a file packed with zstd", .wayOut = kUnpack, .bytes = "\x28\xb5\x2f\xfd"},
    {.what = "a file packed with lz4", .wayOut = kUnpack, .bytes = "\x04\x22\x4d\x18"},
    {.what = "a 7-Zip archive", .wayOut = kUnpack, .bytes = "7z\xbc\xaf\x27\x1c"},
    {.what = "a RAR archive", .wayOut = kUnpack, .bytes = "Rar!\x1a\x07"},
    // Spectra in other forms
    {.what = "a Thermo raw file",
     .wayOut = kConvert,
     .bytes = "\x01\xa1"
              "F\0i\0n\0n\0i\0g\0a\0n\0"sv},
    {.what = "an Agilent ChemStation data file", .wayOut = kExportAgain, .bytes = "\x01\x32\0\0"sv},
    {.what = "a SCIEX wiff file",
     .wayOut = kConvert,
     .bytes = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
     .ending = ".wiff"},
    {.what = "a Shimadzu data file",
     .wayOut = kConvert,
     .bytes = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
     .ending = ".lcd"},
    {.what = "a Shimadzu data file",
     .wayOut = kExportAgain,
     .bytes = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
     .ending = ".qgd"},
    {.what = "an old Excel sheet",
     .wayOut = kExport,
     .bytes = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
     .ending = ".xls"},
    {.what = "an OLE2 file, as of old Excel sheets and some instruments",
     .wayOut = kWrite,
     .bytes = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"},
    {.what = "mzMLb", .wayOut = kConvert, .bytes = "\x89HDF\r\n\x1a\n", .ending = ".mzmlb"},
    {.what = "mz5", .wayOut = kConvert, .bytes = "\x89HDF\r\n\x1a\n", .ending = ".mz5"},
    {.what = "an HDF5 file (mzMLb, mz5, netCDF 4 or other)",
     .wayOut = kConvert,
     .bytes = "\x89HDF\r\n\x1a\n"},
    {.what = "a netCDF file, as of ANDI-MS", .wayOut = kExportAgain, .bytes = "CDF\1"},
    {.what = "a netCDF file, as of ANDI-MS", .wayOut = kExportAgain, .bytes = "CDF\2"},
    {.what = "a netCDF file, as of ANDI-MS", .wayOut = kExportAgain, .bytes = "CDF\5"},
    {.what = "imzML, whose spectra stand in an .ibd file",
     .wayOut = kWrite,
     .root = "mzML",
     .ending = ".imzml"},
    {.what = "imzML, whose spectra stand in an .ibd file",
     .wayOut = kWrite,
     .root = "mzML",
     .inside = "id=\"IMS\""},
    {.what = "mzXML", .wayOut = kConvert, .root = "mzXML"},
    {.what = "mzXML", .wayOut = kConvert, .root = "msRun"},
    {.what = "mzData", .wayOut = kConvertOld, .root = "mzData"},
    {.what = "a Mascot generic file (mgf)", .wayOut = kConvert, .line = "BEGIN IONS"},
    {.what = "an MS1 or MS2 file", .wayOut = kConvert, .line = "H\tCreationDate"},
    {.what = "an MS1 or MS2 file", .wayOut = kConvert, .line = "H\tExtractor"},
    {.what = "an MS1 file", .wayOut = kConvert, .line = "S\t", .ending = ".ms1"},
    {.what = "an MS2 file", .wayOut = kConvert, .line = "S\t", .ending = ".ms2"},
    {.what = "JCAMP-DX", .wayOut = kWrite, .begins = "##title="},
    {.what = "JCAMP-DX", .wayOut = kWrite, .begins = "##jcamp"},
    // Pictures, documents, programs
    {.what = "a PDF document", .wayOut = kWrite, .bytes = "%PDF-"},
    {.what = "a PostScript document", .wayOut = kWrite, .bytes = "%!PS"},
    {.what = "an RTF document", .wayOut = "save it as plain text", .begins = "{\\rtf"},
    {.what = "a JPEG picture", .wayOut = kWrite, .bytes = "\xff\xd8\xff"},
    {.what = "a PNG picture", .wayOut = kWrite, .bytes = "\x89PNG"},
    {.what = "a GIF picture", .wayOut = kWrite, .bytes = "GIF8"},
    {.what = "a TIFF picture", .wayOut = kWrite, .bytes = "II*\0"sv},
    {.what = "a TIFF picture", .wayOut = kWrite, .bytes = "MM\0*"sv},
    {.what = "an HTML page", .wayOut = "save the file that the page leads to", .begins = "<!doctype html"},
    {.what = "an HTML page", .wayOut = "save the file that the page leads to", .begins = "<html"},
    {.what = "an Excel sheet as XML", .wayOut = kExport, .root = "Workbook"},
    {.what = "JSON or program text", .wayOut = kWrite, .begins = "{"},
    {.what = "JSON", .wayOut = kWrite, .begins = "[["},
    {.what = "JSON", .wayOut = kWrite, .begins = "[{"},
    {.what = "JSON", .wayOut = kWrite, .begins = "[\""},
    {.what = "a NumPy array", .wayOut = kWrite, .bytes = "\x93NUMPY"},
    {.what = "a MATLAB file", .wayOut = kWrite, .bytes = "MATLAB 5.0 MAT-file"},
    {.what = "R data", .wayOut = kWrite, .bytes = "RDX2\n"},
    {.what = "R data", .wayOut = kWrite, .bytes = "RDX3\n"},
    {.what = "a Parquet table", .wayOut = kWrite, .bytes = "PAR1\x15"},
    {.what = "a program",
     .wayOut = kWrite,
     .bytes = "\x7f"
              "ELF"},
    {.what = "UTF-32 text", .wayOut = "save it as UTF-8", .bytes = "\xff\xfe\0\0"sv},
    {.what = "UTF-32 text", .wayOut = "save it as UTF-8", .bytes = "\0\0\xfe\xff"sv},
    // Instruments' files, and what is known of them by name only
    {.what = "a Bruker data file", .wayOut = kConvert, .ending = ".baf"},
    {.what = "a Bruker data file", .wayOut = kConvert, .ending = ".yep"},
    {.what = "a Bruker data file", .wayOut = kConvert, .ending = ".tdf_bin"},
    {.what = "a Bruker data file", .wayOut = kConvert, .ending = ".tsf_bin"},
    {.what = "a Waters data file", .wayOut = kConvert, .ending = ".dat"},
    {.what = "a SCIEX data file", .wayOut = kConvert, .ending = ".wiff"},
    {.what = "a SCIEX data file", .wayOut = kConvert, .ending = ".wiff2"},
    {.what = "a SCIEX data file", .wayOut = kConvert, .ending = ".scan"},
    {.what = "a SCIEX data file", .wayOut = kConvert, .ending = ".t2d"},
    {.what = "an Agilent data file", .wayOut = kConvert, .ending = ".ms"},
    {.what = "an instrument's raw data", .wayOut = kConvert, .ending = ".raw"},
    {.what = "the data part of imzML", .wayOut = kWrite, .ending = ".ibd"},
    // Folders
    {.what = "an Agilent MassHunter data folder", .wayOut = kConvert, .entry = "acqdata"},
    {.what = "an Agilent ChemStation data folder", .wayOut = kExportAgain, .entry = "data.ms"},
    {.what = "a Bruker data folder", .wayOut = kConvert, .entry = "analysis.baf"},
    {.what = "a Bruker data folder", .wayOut = kConvert, .entry = "analysis.tdf"},
    {.what = "a Bruker data folder", .wayOut = kConvert, .entry = "analysis.tsf"},
    {.what = "a Bruker data folder", .wayOut = kConvert, .entry = "analysis.yep"},
    {.what = "a Bruker data folder", .wayOut = kConvert, .entry = "acqus"},
    {.what = "a Waters data folder", .wayOut = kConvert, .entry = "_func001.dat"},
    {.what = "a Waters data folder", .wayOut = kConvert, .entry = "_extern.inf"},
    {.what = "an instrument's data folder", .wayOut = kConvert, .ending = ".d", .entry = "*"},
    {.what = "an instrument's data folder", .wayOut = kConvert, .ending = ".raw", .entry = "*"},
};

std::string Small(std::string_view text) {
  std::string small(text);
  for (char& c : small) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  }
  return small;
}

std::string_view WithoutBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// The name of the first element, if the head holds it.
std::string_view RootOf(std::string_view text) {
  for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
    const std::string_view rest = text.substr(at + 1);
    if (rest.starts_with("!--")) {
      at = std::min(text.find("-->", at), text.size());
    } else if (!rest.starts_with('?') && !rest.starts_with('!')) {
      return rest.substr(0, rest.find_first_of(" \t\r\n/>"));
    }
  }
  return {};
}

// What a file shows of itself.
struct Evidence {
  std::string_view head;
  std::string text, begin, name;
  std::string_view root;
};

bool HasLine(std::string_view text, std::string_view begin) {
  for (std::size_t at = 0; at < text.size();
       at = std::min(text.find_first_of("\r\n", at), text.size() - 1) + 1) {
    if (text.substr(at).starts_with(begin)) return true;
  }
  return false;
}

bool Fits(const ForeignKind& kind, const Evidence& file) {
  if (!kind.entry.empty() || !file.name.ends_with(kind.ending)) return false;
  if (!kind.bytes.empty() &&
      (file.head.size() < kind.at || !file.head.substr(kind.at).starts_with(kind.bytes)))
    return false;
  if (!file.begin.starts_with(kind.begins)) return false;
  if (!kind.root.empty() && file.root != kind.root) return false;
  if (!kind.inside.empty() && file.text.find(kind.inside) == std::string::npos) return false;
  return kind.line.empty() || HasLine(file.text, kind.line);
}

std::string Sentence(const ForeignKind& kind, std::string_view denial) {
  return std::string(kind.what) + std::string(denial) + "; " + std::string(kind.wayOut);
}

bool Holds(const std::string& folder, std::string_view entry) {
  std::error_code error;
  for (auto at = std::filesystem::directory_iterator(folder, error);
       !error && at != std::filesystem::directory_iterator(); at.increment(error)) {
    if (Small(at->path().filename().string()) == entry) return true;
  }
  return false;
}

}  // namespace

bool IsBinary(std::string_view head) {
  const std::string text = HeadText(head);
  const std::string_view line = std::string_view(text).substr(0, text.find_first_of("\r\n"));
  return std::ranges::any_of(
      line, [](char c) { return static_cast<unsigned char>(c) < 0x20 && (c < '\t' || c > '\f'); });
}

std::string DescribeForeign(std::string_view head, const std::string& file) {
  Evidence evidence{head, HeadText(head), "", Small(std::filesystem::path(file).filename().string()), {}};
  constexpr std::size_t kBegin = 32;
  evidence.begin = Small(WithoutBlanks(evidence.text).substr(0, kBegin));
  if (evidence.begin.starts_with('<')) evidence.root = RootOf(evidence.text);
  const bool isBinary = IsBinary(head);
  for (const ForeignKind& kind : kKinds) {
    if ((isBinary || kind.ShowsContent()) && Fits(kind, evidence))
      return Sentence(kind, ", neither mzML nor columns of text");
  }
  return isBinary ? "binary data, neither mzML nor columns of text" : "";
}

std::string DescribeDatabase(const std::string& file) {
  const std::string name = Small(file);
  for (const ForeignKind& kind : kDatabases)
    if (name.ends_with(kind.ending)) return "is " + Sentence(kind, "");
  return "is an SQLite file, but not a run of raw counts";
}

std::string DescribeFolder(const std::string& folder) {
  const std::string name = Small(folder.substr(0, folder.find_last_not_of('/') + 1));
  for (const ForeignKind& kind : kKinds) {
    if (kind.entry.empty() || !name.ends_with(kind.ending)) continue;
    if (kind.entry == "*" || Holds(folder, kind.entry)) return "is a folder, " + Sentence(kind, "");
  }
  return "is a folder, not a file";
}

}  // namespace TslTool
