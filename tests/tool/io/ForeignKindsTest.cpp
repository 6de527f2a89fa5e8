#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <tool/TempFile.h>
#include <tool/io/ForeignKinds.h>
#include <tool/io/TextReading.h>

namespace tests {
namespace {

using namespace std::string_view_literals;
using TslTool::DescribeFolder;
using TslTool::DescribeForeign;

constexpr auto kOle = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"sv;
constexpr auto kHdf = "\x89HDF\r\n\x1a\n"sv;

struct Kind {
  std::string_view head;
  std::string name, what, wayOut;
};

TEST(ForeignKinds, AreKnownByTheirContentWhateverTheirName) {
  const std::string convert = "convert it to mzML with ProteoWizard's msconvert";
  const std::string unpack = "unpack it first", sheet = "export the sheet as CSV";
  const std::string columns = "export columns of m/z and amplitude";
  const std::string again = "export it as mzML or as columns from the software that wrote it";
  const std::string tar = std::string(257, 'a') + "ustar";
  const std::vector<Kind> table = {
      {"PK\3\4", "a.XLSX", "an Excel sheet", sheet},
      {"PK\3\4 [Content_Types].xml", "a", "an Excel sheet", sheet},
      {"PK\3\4", "a.ods", "an OpenDocument sheet", sheet},
      {"PK\3\4", "a.txt", "a zip archive", unpack},
      {tar, "a.txt", "a tar archive", unpack},
      {"\x1f\x8b\x08", "a", "a file packed with gzip twice", unpack},
      {"BZh91AY&SY", "a", "a file packed with bzip2", unpack},
      {"\xfd"
       "7zXZ\0"sv,
       "a", "a file packed with xz", unpack},
      {"\x28\xb5\x2f\xfd", "a", "a file packed with zstd", unpack},
      {"7z\xbc\xaf\x27\x1c", "a", "a 7-Zip archive", unpack},
      {"\x01\xa1"
       "F\0i\0n\0n\0i\0g\0a\0n\0"sv,
       "a.raw", "a Thermo raw file", convert},
      {kOle, "a.wiff", "a SCIEX wiff file", convert},
      {kOle, "a.xls", "an old Excel sheet", sheet},
      {kOle, "a", "an OLE2 file, as of old Excel sheets and some instruments", columns},
      {kHdf, "a.mzMLb", "mzMLb", convert},
      {kHdf, "a.mz5", "mz5", convert},
      {kHdf, "a", "an HDF5 file (mzMLb, mz5, netCDF 4 or other)", convert},
      {"CDF\1\0"sv, "a.cdf", "a netCDF file, as of ANDI-MS", again},
      {"<?xml version=\"1.0\"?>\n<!-- <a> -->\n<mzXML xmlns=\"x\">", "a", "mzXML", convert},
      {"<mzData version=\"1\">", "a", "mzData", "convert it to mzML with OpenMS's FileConverter"},
      {"<mzML><cvList><cv id=\"IMS\"/>", "a.mzML", "imzML, whose spectra stand in an .ibd file", columns},
      {"<mzML>", "a.imzML", "imzML, whose spectra stand in an .ibd file", columns},
      {"# by hand\r\nBEGIN IONS\r\n", "a.txt", "a Mascot generic file (mgf)", convert},
      {"H\tCreationDate\t1\n", "a", "an MS1 or MS2 file", convert},
      {"S\t1\t1\t500\n", "a.ms2", "an MS2 file", convert},
      {"##TITLE=x\n", "a.txt", "JCAMP-DX", columns},
      {"%PDF-1.4", "a.txt", "a PDF document", columns},
      {"\xff\xd8\xff\xe0", "a", "a JPEG picture", columns},
      {"\x89PNG", "a", "a PNG picture", columns},
      {"\n<!DOCTYPE HTML>", "a.xls", "an HTML page", "save the file that the page leads to"},
      {"<Workbook>", "a.xls", "an Excel sheet as XML", sheet},
      {" {\"a\": 1}", "a", "JSON or program text", columns},
      {"[[1, 2]]", "a", "JSON", columns},
      {"\xff\xfe\0\0"sv, "a", "UTF-32 text", "save it as UTF-8"},
      {"\0\1"sv, "a.baf", "a Bruker data file", convert},
      {"\0\1"sv, "a.WIFF.SCAN", "a SCIEX data file", convert},
      {"\0\1"sv, "a.raw", "an instrument's raw data", convert},
  };
  for (const Kind& kind : table)
    EXPECT_EQ(DescribeForeign(kind.head, "/x/" + kind.name),
              kind.what + ", neither mzML nor columns of text; " + kind.wayOut);
  EXPECT_EQ(DescribeForeign("\0\1"sv, "a.xyz"), "binary data, neither mzML nor columns of text");
}

TEST(ForeignKinds, LeaveWhatMayBeSpectra) {
  const std::string wide = Utf16("100 5\n", false, true);
  for (const std::string_view head :
       {""sv, "100 5\n"sv, "<mzML>"sv, "<other>"sv, "<?xml?><indexedmzML>"sv, "[MS]\n1 2"sv, "% 5\n"sv,
        "PAR1,PAR2\n"sv, "S\t5\n"sv, "100 5\n\0\1"sv, std::string_view(wide)})
    EXPECT_EQ(DescribeForeign(head, "a.raw"), "") << head;
}

TEST(ForeignKinds, TellInstrumentsFolders) {
  const TempFile data("_FUNC001.DAT", "");
  EXPECT_EQ(DescribeFolder(data.Folder()),
            "is a folder, a Waters data folder; convert it to mzML with ProteoWizard's msconvert");
  const TempFile other("a.txt", "");
  EXPECT_EQ(DescribeFolder(other.Folder()), "is a folder, not a file");
  const std::string folder = other.Folder() + "/x.D/";
  std::filesystem::create_directory(folder);
  EXPECT_EQ(DescribeFolder(folder),
            "is a folder, an instrument's data folder; convert it to mzML with ProteoWizard's msconvert");
}

TEST(ForeignKinds, DatabasesAreKnownByTheirNames) {
  const std::string convert = "; convert the folder to mzML with ProteoWizard's msconvert";
  EXPECT_EQ(TslTool::DescribeDatabase("a.d/analysis.tdf"), "is the index of a Bruker data folder" + convert);
  EXPECT_EQ(TslTool::DescribeDatabase("A.TSF"), "is the index of a Bruker data folder" + convert);
  EXPECT_EQ(TslTool::DescribeDatabase("a.db"), "is an SQLite file, but not a run of raw counts");
}

}  // namespace
}  // namespace tests
