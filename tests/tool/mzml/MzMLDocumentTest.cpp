#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/IndexedReading.h>
#include <tool/io/MzMLReading.h>
#include <tool/mzml/MzMLDocument.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using TslTool::Scan;

namespace Cv = TslTool::Cv;

struct Content {
  int msLevel;
  TslTool::CvTerm representation;
  std::string id;
};

// A document of one spectrum for each.
std::string Document(const std::vector<Content>& contents) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.mzML";
  TslTool::Output output(file);
  TslTool::MzMLDocument document;
  for (const auto& [level, representation, id] : contents) {
    TslTool::LoadedSpectrum loaded;
    loaded.msLevel = level;
    loaded.id = id;
    document.Add(output, document.Element(loaded, {representation, {100, 101, 102}, {1, 5, 2}, Cv::kCounts}));
  }
  document.WriteTo(output, {});
  output.Commit();
  return ReadFile(file);
}

// Its lines before the spectra.
std::string HeadOf(const std::string& text) { return text.substr(0, text.find("<spectrumList")); }

TEST(MzMLDocument, HoldsItsSpectraInTheirOrder) {
  const std::string text =
      Document({{1, Cv::kProfileSpectrum, "scan=7"}, {2, Cv::kCentroidSpectrum, "scan=8"}});
  const TempFile file("a.mzML", text);
  const std::vector<Scan> scans = ReadAll(file.Path());
  ASSERT_EQ(scans.size(), 2U);
  EXPECT_EQ(scans[0].number, 7U);
  EXPECT_EQ(scans[0].representation, Scan::Profile);
  EXPECT_EQ(scans[1].representation, Scan::Centroid);
  EXPECT_EQ(scans[1].msLevel, 2);
  EXPECT_EQ(scans[1].amplitude, (std::vector<double>{1, 5, 2}));
  EXPECT_EQ(IndexOf(text).size(), 2U);
  EXPECT_EQ(ChecksumOf(text), SumUpToChecksum(text));
}

TEST(MzMLDocument, ItsHeadNamesEachKindOfSpectraThatItHolds) {
  const std::string both = HeadOf(Document({{1, Cv::kProfileSpectrum, ""}, {2, Cv::kCentroidSpectrum, ""}}));
  for (const char* term : {"MS:1000579", "MS:1000580", "MS:1000127", "MS:1000128"})
    EXPECT_THAT(both, HasSubstr(term));
  const std::string one = HeadOf(Document({{0, Cv::kProfileSpectrum, ""}, {0, Cv::kProfileSpectrum, ""}}));
  for (const char* term : {"MS:1000294", "MS:1000128"}) EXPECT_THAT(one, HasSubstr(term));
  for (const char* term : {"MS:1000579", "MS:1000580", "MS:1000127"}) EXPECT_THAT(one, Not(HasSubstr(term)));
}

TEST(MzMLDocument, WithoutSpectraIsADocumentToo) {
  EXPECT_THAT(Document({}), HasSubstr("<spectrumList count=\"0\""));
}

}  // namespace
}  // namespace tests
