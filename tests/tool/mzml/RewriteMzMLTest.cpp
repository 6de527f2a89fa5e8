#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/ToolRun.h>
#include <tool/frame/InputError.h>
#include <tool/io/IndexedReading.h>
#include <tool/io/MzMLReading.h>
#include <tool/mzml/RewriteMzML.h>

namespace tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using TslTool::Scan;

// What becomes of a file whose m/z are doubled.
std::string Rewritten(const std::string& text) {
  const TempFile in("in.mzML", text);
  const std::string out = in.Folder() + "/out.mzML";
  TslTool::Output output(out);
  TslTool::RewriteMzML(
      in.Path(), [](double mz) { return 2 * mz; }, "a program", {{TslTool::Cv::kCalibration}, {{"a", "b"}}},
      output);
  output.Commit();
  return ReadFile(out);
}

const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<!-- made by hand -->\n"
    "<indexedmzML xmlns=\"http://psi.hupo.org/ms/mzml\"><mzML id=\"x\"><cvList count=\"1\"><cv "
    "id=\"MS\"/></cvList>"
    "<softwareList count=\"1\"><software id=\"s\" version=\"1\"/></softwareList>"
    "<instrumentConfigurationList count=\"1\"><instrumentConfiguration "
    "id=\"IC\"/></instrumentConfigurationList>"
    "<dataProcessingList count=\"2\"><dataProcessing id=\"old\"><processingMethod order=\"0\" "
    "softwareRef=\"s\"/>"
    "</dataProcessing><dataProcessing id=\"other\"/></dataProcessingList>"
    "<run id=\"r\"><spectrumList count=\"2\" defaultDataProcessingRef=\"old\">";
const std::string kTail =
    "</spectrumList><chromatogramList count=\"1\" defaultDataProcessingRef=\"other\"><chromatogram "
    "id=\"TIC\" "
    "defaultArrayLength=\"0\"><cvParam "
    "accession=\"MS:1000235\"/></chromatogram></chromatogramList></run></mzML>"
    "<indexList count=\"1\"><index name=\"spectrum\"><offset idRef=\"scan=1\">7</offset></index></indexList>"
    "<indexListOffset>1</indexListOffset><fileChecksum>0</fileChecksum></indexedmzML>\n";

std::string Whole() {
  return kHead + PlainSpectrum("scan=1", {100, 200, 300}, {1, 5, 2}) +
         PlainSpectrum("scan=2", {50, 60, 70}, {3, 4, 5}) + kTail;
}

TEST(RewriteMzML, ChangesEverySpectrumAndNothingElseOfIt) {
  const TempFile file("a.mzML", Rewritten(Whole()));
  const std::vector<Scan> scans = ReadAll(file.Path());
  ASSERT_EQ(scans.size(), 2U);
  EXPECT_THAT(scans[0].mz, ElementsAre(200, 400, 600));
  EXPECT_THAT(scans[0].amplitude, ElementsAre(1, 5, 2));
  EXPECT_THAT(scans[1].mz, ElementsAre(100, 120, 140));
  EXPECT_EQ(scans[1].id, "scan=2");
}

TEST(RewriteMzML, KeepsWhatStandsAroundTheSpectra) {
  const std::string text = Rewritten(Whole());
  EXPECT_THAT(text,
              testing::StartsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<indexedmzML xmlns="));
  for (const char* kept :
       {"<cv id=\"MS\"/>", "<software id=\"s\" version=\"1\" />", "<instrumentConfiguration id=\"IC\"/>",
        "<run id=\"r\">",
        "<chromatogram id=\"TIC\" defaultArrayLength=\"0\"><cvParam accession=\"MS:1000235\"/>",
        "<chromatogramList count=\"1\" defaultDataProcessingRef=\"other\">"})
    EXPECT_THAT(text, HasSubstr(kept));
}

TEST(RewriteMzML, TellsWhatWasDoneBehindWhatHadBeenDone) {
  const TempFile file("a.mzML", Rewritten(Whole()));
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(file.Path().c_str()));
  const pugi::xml_node mzml = document.document_element().child("mzML");
  EXPECT_EQ(mzml.child("softwareList").attribute("count").as_int(), 2);
  const pugi::xml_node list = mzml.child("dataProcessingList");
  EXPECT_EQ(list.attribute("count").as_int(), 3);
  EXPECT_EQ(std::distance(list.begin(), list.end()), 3);
  const std::string used =
      mzml.child("run").child("spectrumList").attribute("defaultDataProcessingRef").value();
  const pugi::xml_node processing = list.find_child_by_attribute("id", used.c_str());
  const pugi::xml_node last = processing.last_child();
  EXPECT_STREQ(processing.first_child().attribute("softwareRef").value(), "s");
  EXPECT_EQ(last.attribute("order").as_int(), 1);
  EXPECT_STREQ(last.child("cvParam").attribute("accession").value(), "MS:1001485");
  EXPECT_TRUE(
      mzml.child("softwareList").find_child_by_attribute("id", last.attribute("softwareRef").value()));
}

TEST(RewriteMzML, TheIndexLeadsToSpectraAndChromatograms) {
  const std::string text = Rewritten(Whole());
  const std::vector<IndexEntry> index = IndexOf(text);
  ASSERT_EQ(index.size(), 3U);
  for (const IndexEntry& entry : index)
    EXPECT_THAT(text.substr(entry.offset, 60),
                AllOf(testing::StartsWith(entry.id == "TIC" ? "<chromatogram " : "<spectrum "),
                      HasSubstr("id=\"" + entry.id + "\"")));
  EXPECT_EQ(text.substr(IndexListOffset(text), 10), "<indexList");
  EXPECT_EQ(ChecksumOf(text), SumUpToChecksum(text));
}

TEST(RewriteMzML, WithoutAnIndexHasNone) {
  const std::string text = Rewritten(MzML(PlainSpectrum("scan=1", {100, 200, 300}, {1, 5, 2}), 1));
  EXPECT_THAT(text, AllOf(HasSubstr("</mzML>"), Not(HasSubstr("indexList"))));
}

TEST(RewriteMzML, AnErrorNamesTheSpectrum) {
  const std::string text = MzML(SpectrumOf("scan=7", 4, ArrayOf(kMz, BytesOf<double>({1, 2, 3}))), 1);
  try {
    Rewritten(text);
    FAIL() << "it was rewritten";
  } catch (const TslTool::InputError& error) {
    EXPECT_THAT(error.Place(), HasSubstr("scan=7"));
  }
}

TEST(RewriteMzML, EveryBeginningOfAFileIsRefused) {
  const std::string text = Whole();
  for (std::size_t n = 0; n + 1 < text.size(); n += 37)
    EXPECT_THROW(Rewritten(text.substr(0, n)), TslTool::InputError) << n;
}

}  // namespace
}  // namespace tests
