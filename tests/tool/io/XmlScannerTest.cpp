#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/XmlScanner.h>

namespace tests {
namespace {

using TslTool::ByteSource;
using TslTool::InputError;
using TslTool::XmlScanner;
using Event = XmlScanner::Event;

// "+a" for a start tag, "-a" for an end tag.
std::string Walk(const std::string& text) {
  const TempFile file("a.xml", text);
  XmlScanner xml{ByteSource(file.Path())};
  std::string walk;
  for (auto event = xml.Next(); event != Event::Finished; event = xml.Next()) {
    walk += (event == Event::Start ? "+" : "-") + xml.Name() + " ";
  }
  return walk;
}

std::string ErrorOf(const std::string& text) {
  try {
    Walk(text);
  } catch (const InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(XmlScanner, ReportsEveryTagInOrder) {
  EXPECT_EQ(Walk("<a><b x='1'>text</b><c/></a>"), "+a +b -b +c -c -a ");
}

TEST(XmlScanner, PassesOverCommentsInstructionsAndCdata) {
  EXPECT_EQ(Walk("<?xml version='1.0'?><!-- <x> --><a><![CDATA[<y>]]><?p <z> ?></a>\n<!-- end -->"),
            "+a -a ");
}

TEST(XmlScanner, LetsAnAttributeHoldAGreaterSign) { EXPECT_EQ(Walk("<a x=\"1>0\" y = '\"'/>"), "+a -a "); }

TEST(XmlScanner, FindsAttributes) {
  const TempFile file("a.xml", "<a one=\"1\" two = '2 2'/>");
  XmlScanner xml{ByteSource(file.Path())};
  xml.Next();
  EXPECT_EQ(xml.Attribute("two"), "2 2");
  EXPECT_EQ(xml.Attribute("wo"), std::nullopt);
}

TEST(XmlScanner, ReadsAnElementWhole) {
  const std::string inner = "<b><c>" + std::string(900000, 'x') + "</c><c/></b>";
  const TempFile file("a.xml", "<a>\n" + inner + "\n<d/></a>");
  XmlScanner xml{ByteSource(file.Path())};
  xml.Next();
  xml.Next();
  EXPECT_EQ(xml.ReadElement(), inner);
  EXPECT_EQ(xml.Place(), "line 2");
  xml.Next();
  EXPECT_EQ(xml.Name(), "d");
  EXPECT_EQ(xml.Place(), "line 3");
  EXPECT_EQ(xml.ReadElement(), "<d/>");
}

TEST(XmlScanner, CountsLinesOverManyChunks) {
  std::string text = "<a>\n";
  for (int i = 0; i < 100000; ++i) text += "<b/>\n";
  EXPECT_EQ(ErrorOf(text), "line 100002: the file ends inside <a>");
}

TEST(XmlScanner, RefusesElementsNestedWithoutBound) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "<a>";
  EXPECT_EQ(ErrorOf(text), "line 1: elements nested deeper than 256");
}

TEST(XmlScanner, RefusesTagsThatAreNone) {
  for (const char* text : {"<a><></></a>", "<a>< b/></a>", "<a><1/></a>", "<a b/>", "<a b=c/>",
                           "<a b=\"1\"c=\"2\"/>", "<a></a b>", "<a><!ELEMENT x></a>", "<a <b/>", "<a b='<'/>",
                           "<a \x01/>", "<a><!-- </a>", "<a><![CDATA[ </a>", "<a><? </a>"}) {
    EXPECT_NE(ErrorOf(text), "") << text;
  }
}

}  // namespace
}  // namespace tests
