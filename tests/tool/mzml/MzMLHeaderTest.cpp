#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/IndexedReading.h>
#include <tool/io/RunMaker.h>
#include <tool/mzml/MzMLHeader.h>
#include <tslbl/Version.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;
using TslTool::MzMLContent;
using TslTool::MzMLOrigin;

namespace Cv = TslTool::Cv;

// The element <mzML> of a header.
class Header {
 public:
  explicit Header(const MzMLOrigin& origin, const MzMLContent& content = {})
      : text_(TslTool::MzMLHeader(origin, content)) {
    const std::string whole = text_ + "</spectrumList></run></mzML></indexedmzML>";
    EXPECT_TRUE(document_.load_string(whole.c_str())) << text_;
  }
  const std::string& Text() const { return text_; }
  pugi::xml_node At(const char* path) const {
    return document_.child("indexedmzML").child("mzML").first_element_by_path(path);
  }
  // The terms of an element, as "accession" or "accession=value".
  std::vector<std::string> Terms(const char* path) const {
    std::vector<std::string> terms;
    for (const pugi::xml_node& param : At(path).children("cvParam")) {
      const std::string value = param.attribute("value").value();
      terms.push_back(param.attribute("accession").value() + (value.empty() ? "" : "=" + value));
    }
    return terms;
  }

 private:
  std::string text_;
  pugi::xml_document document_;
};

TEST(MzMLHeader, EndsBehindTheStartTagOfTheListOfSpectra) {
  EXPECT_THAT(Header({}, {17, {}}).Text(),
              EndsWith("      <spectrumList count=\"17\" defaultDataProcessingRef=\"evaluation\">\n"));
  EXPECT_THAT(Header({}).Text(), StartsWith("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<indexedmzML "));
}

TEST(MzMLHeader, NamesTheProgramWithItsVersion) {
  const Header header({"", {}, "tslbl peaks"});
  EXPECT_THAT(header.Terms("softwareList/software"), ElementsAre("MS:1000799=tslbl peaks"));
  EXPECT_STREQ(header.At("softwareList/software").attribute("id").value(), "tslbl");
  EXPECT_STREQ(header.At("softwareList/software").attribute("version").value(), TSLBL_VERSION);
}

TEST(MzMLHeader, EveryReferenceLeadsSomewhere) {
  const TempFile text("a.txt", "100 1\n");
  const Header header({text.Path(), {}, "tslbl", {{{Cv::kConversion}, {}}}});
  const pugi::xml_node run = header.At("run");
  const auto id = [&](const char* path) { return std::string(header.At(path).attribute("id").value()); };
  EXPECT_EQ(id("instrumentConfigurationList/instrumentConfiguration"),
            run.attribute("defaultInstrumentConfigurationRef").value());
  EXPECT_EQ(id("fileDescription/sourceFileList/sourceFile"), run.attribute("defaultSourceFileRef").value());
  EXPECT_EQ(id("dataProcessingList/dataProcessing"),
            run.child("spectrumList").attribute("defaultDataProcessingRef").value());
  EXPECT_TRUE(header.At("dataProcessingList/dataProcessing/processingMethod"));
  for (const pugi::xml_node& method : header.At("dataProcessingList/dataProcessing").children())
    EXPECT_EQ(id("softwareList/software"), method.attribute("softwareRef").value());
}

TEST(MzMLHeader, TellsWhatWasDoneInItsOrder) {
  const Header header({"", {}, "", {{{Cv::kSmoothing}, {{"a", "1"}, {"b", "2"}}}, {{Cv::kConversion}, {}}}});
  const pugi::xml_node processing = header.At("dataProcessingList/dataProcessing");
  const pugi::xml_node first = processing.first_child();
  EXPECT_EQ(first.attribute("order").as_int(-1), 0);
  EXPECT_STREQ(first.child("cvParam").attribute("accession").value(), "MS:1000592");
  EXPECT_STREQ(first.last_child().attribute("name").value(), "b");
  EXPECT_STREQ(first.last_child().attribute("value").value(), "2");
  EXPECT_EQ(first.next_sibling().attribute("order").as_int(), 1);
}

TEST(MzMLHeader, TheContentAreSpectraOfTheirTypes) {
  EXPECT_THAT(Header({}, {1, {Cv::kMs1Spectrum, Cv::kMsnSpectrum, Cv::kProfileSpectrum}})
                  .Terms("fileDescription/fileContent"),
              ElementsAre("MS:1000579", "MS:1000580", "MS:1000128"));
}

TEST(MzMLHeader, ATextIsASourceWithItsChecksum) {
  const TempFile text("two words.txt", "abc");
  const Header header({text.Path()}, {1, {}, Cv::kScanNumberOnly});
  const pugi::xml_node source = header.At("fileDescription/sourceFileList/sourceFile");
  EXPECT_STREQ(source.attribute("name").value(), "two words.txt");
  EXPECT_EQ(source.attribute("location").value(), "file://" + text.Folder());
  EXPECT_THAT(header.Terms("fileDescription/sourceFileList/sourceFile"),
              ElementsAre("MS:1000776", "MS:1001369", "MS:1000569=a9993e364706816aba3e25717850c26c9cd0d89d"));
}

TEST(MzMLHeader, TheIdsOfAnMzMLFileAreBuiltAsItSays) {
  const TempFile file("a.mzML", "<mzML/>");
  const MzMLOrigin origin = {file.Path(), {"MS:1000768", "Thermo nativeID format"}};
  const auto terms =
      Header(origin, {1, {}, Cv::kIndexOnly}).Terms("fileDescription/sourceFileList/sourceFile");
  ASSERT_EQ(terms.size(), 3U);
  EXPECT_EQ(terms[0], "MS:1000768");
  EXPECT_EQ(terms[1], "MS:1000584");
}

TEST(MzMLHeader, IdsOfWhichNothingIsKnownHaveNoTerm) {
  const TempFile file("a.mzML", "<mzML/>");
  EXPECT_EQ(Header({file.Path()}, {1, {}, {}}).Terms("fileDescription/sourceFileList/sourceFile").size(), 2U);
}

TEST(MzMLHeader, ALocationIsAUri) {
  const TempFile file("x", "");
  const std::string folder = file.Folder() + "/a b%\xc3\xa4";
  std::filesystem::create_directory(folder);
  std::ofstream(folder + "/c.txt") << "1 1\n";
  const Header header({folder + "/c.txt"});
  EXPECT_EQ(header.At("fileDescription/sourceFileList/sourceFile").attribute("location").value(),
            "file://" + file.Folder() + "/a%20b%25%C3%A4");
}

TEST(MzMLHeader, ARunIsNamedWithItsChecksumAndItsInstrumentIsKnown) {
  const SmallRun small;
  const std::string run = small.Path();
  const Header header({run});
  EXPECT_FALSE(header.At("fileDescription/sourceFileList"));
  EXPECT_FALSE(header.At("run").attribute("defaultSourceFileRef"));
  std::vector<std::string> params;
  for (const pugi::xml_node& param : header.At("fileDescription/fileContent").children("userParam"))
    params.emplace_back(param.attribute("value").value());
  EXPECT_THAT(params, ElementsAre("small.run", SumOf(ReadFile(run))));
  const char* const quadrupole = "instrumentConfigurationList/instrumentConfiguration/componentList/analyzer";
  EXPECT_THAT(header.Terms(quadrupole), ElementsAre("MS:1000081"));
}

TEST(MzMLHeader, OfAForeignInstrumentNothingIsSaid) {
  const TempFile text("a.txt", "100 1\n");
  const Header header({text.Path()});
  EXPECT_THAT(header.Terms("instrumentConfigurationList/instrumentConfiguration"), ElementsAre("MS:1000031"));
  EXPECT_FALSE(header.At("instrumentConfigurationList/instrumentConfiguration/componentList"));
}

TEST(MzMLHeader, TheRunIsNamedAfterTheInput) {
  const std::pair<const char*, const char*> table[] = {{"", "demonstration"},
                                                       {"/dev/stdin", "stdin"},
                                                       {"/x/a.mzML.gz", "a"},
                                                       {"A-b_c.1.txt", "A-b_c.1"},
                                                       {"two words.txt", "two_x0020_words"},
                                                       {"12.txt", "_x0031_2"},
                                                       {"\xc3\xa4.txt", "_x00C3__x00A4_"}};
  for (const auto& [input, id] : table) {
    const Header header({input});
    EXPECT_STREQ(header.At("run").attribute("id").value(), id) << input;
  }
}

}  // namespace
}  // namespace tests
