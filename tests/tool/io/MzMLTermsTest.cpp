#include <gtest/gtest.h>
#include <tool/io/MzMLTerms.h>

#include <string>

namespace tests {
namespace {

namespace Cv = TslTool::Cv;

TEST(MzMLTerms, ATermNamesItsVocabulary) {
  pugi::xml_document document;
  pugi::xml_node scan = document.append_child("scan");
  TslTool::AddTerm(scan, Cv::kScanStartTime, "2.5", Cv::kSecond);
  EXPECT_EQ(TslTool::ElementText(scan, 0),
            "<scan>\n  <cvParam cvRef=\"MS\" accession=\"MS:1000016\" name=\"scan start time\" value=\"2.5\" "
            "unitCvRef=\"UO\" unitAccession=\"UO:0000010\" unitName=\"second\" />\n</scan>\n");
}

TEST(MzMLTerms, WhatXmlReservesIsEscaped) {
  pugi::xml_document document;
  pugi::xml_node run = document.append_child("run");
  TslTool::AddUserParam(run, "a<b", "\"&\"");
  pugi::xml_document read;
  ASSERT_TRUE(read.load_string(TslTool::ElementText(run, 0).c_str()));
  const pugi::xml_node param = read.child("run").child("userParam");
  EXPECT_STREQ(param.attribute("name").value(), "a<b");
  EXPECT_STREQ(param.attribute("value").value(), "\"&\"");
}

TEST(MzMLTerms, AListTellsHowManyItHas) {
  pugi::xml_document document;
  pugi::xml_node run = document.append_child("run");
  EXPECT_STREQ(TslTool::AddList(run, "scanList", 3).attribute("count").value(), "3");
}

TEST(MzMLTerms, AnElementIsIndentedByItsDepth) {
  pugi::xml_document document;
  document.append_child("a").append_child("b");
  EXPECT_EQ(TslTool::ElementText(document.first_child(), 2), "    <a>\n      <b />\n    </a>\n");
}

}  // namespace
}  // namespace tests
