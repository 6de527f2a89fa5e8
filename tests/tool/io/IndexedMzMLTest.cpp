#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/ToolRun.h>
#include <tool/io/IndexedMzML.h>
#include <tool/io/IndexedReading.h>

#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

constexpr const char* kHead = "<indexedmzML>\n  <mzML>\n    <run>\n      <spectrumList count=\"2\">\n";

std::string Written(const std::vector<std::string>& ids) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.mzML";
  TslTool::IndexedMzML document(folder.Folder());
  for (const std::string& id : ids)
    document.Add("        <spectrum id=\"" + id + "\" a=\"1\">\n        </spectrum>\n");
  EXPECT_EQ(document.Count(), ids.size());
  TslTool::Output output(file);
  document.WriteTo(output, kHead);
  output.Commit();
  return ReadFile(file);
}

TEST(IndexedMzML, NumbersTheSpectraAndKeepsTheirOrder) {
  const std::string text = Written({"scan=7", "scan=3"});
  EXPECT_THAT(text, StartsWith(std::string(kHead) +
                               "        <spectrum index=\"0\" id=\"scan=7\" a=\"1\">\n        </spectrum>\n"
                               "        <spectrum index=\"1\" id=\"scan=3\" a=\"1\">\n        </spectrum>\n"
                               "      </spectrumList>\n    </run>\n  </mzML>\n  <indexList count=\"1\">\n"));
  EXPECT_THAT(text, EndsWith("</fileChecksum>\n</indexedmzML>\n"));
}

TEST(IndexedMzML, EveryOffsetIsThatOfItsSpectrum) {
  const std::string text = Written({"scan=1", "a=1 b=&lt;2", "scan=3"});
  const std::vector<IndexEntry> index = IndexOf(text);
  ASSERT_EQ(index.size(), 3U);
  for (std::size_t i = 0; i < index.size(); ++i)
    EXPECT_THAT(text.substr(index[i].offset),
                StartsWith("<spectrum index=\"" + std::to_string(i) + "\" id=\"" + index[i].id + "\""));
  EXPECT_EQ(index[1].id, "a=1 b=&lt;2");
  EXPECT_THAT(text.substr(IndexListOffset(text)), StartsWith("<indexList count=\"1\">"));
}

TEST(IndexedMzML, TheChecksumIsThatOfAllBeforeIt) {
  const std::string text = Written({"scan=1", "scan=2"});
  EXPECT_EQ(ChecksumOf(text), SumUpToChecksum(text));
}

TEST(IndexedMzML, OffsetsBeyondOneLineOfDigitsAreRight) {
  std::vector<std::string> ids;
  for (int i = 0; i < 2000; ++i) ids.push_back("scan=" + std::to_string(i));
  const std::string text = Written(ids);
  const std::vector<IndexEntry> index = IndexOf(text);
  ASSERT_EQ(index.size(), ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(index[i].id, ids[i]);
    EXPECT_EQ(text.compare(index[i].offset, 10, "<spectrum "), 0);
  }
}

}  // namespace
}  // namespace tests
