#include <gtest/gtest.h>

#include <tslbl/closed/common/XMLBuilder.h>
#include <limits>

namespace {

using TslCommon::XMLBuilder;

TEST(XMLBuilder, IsEmptyAtFirst) { EXPECT_EQ(XMLBuilder().QXML(), L""); }

TEST(XMLBuilder, NestsElementsInTheirOrder) {
  XMLBuilder builder;
  builder.StartNode(L"Step");
  builder.WNode(L"Passes", L"1");
  builder.StartList(L"Items");
  builder.WNode(L"Item", L"b");
  builder.WNode(L"Item", L"a");
  builder.EndList();
  builder.WNode(L"Size", L"5");
  builder.EndNode();
  EXPECT_EQ(builder.QXML(),
            L"<Step>\n"
            L"  <Passes>1</Passes>\n"
            L"  <Items>\n"
            L"    <Item>b</Item>\n"
            L"    <Item>a</Item>\n"
            L"  </Items>\n"
            L"  <Size>5</Size>\n"
            L"</Step>\n");
}

TEST(XMLBuilder, WritesAttributesAndTextOfTheOpenElement) {
  XMLBuilder builder;
  builder.StartNode(L"Point");
  builder.WAttribute(L"Type", L"Single");
  builder.WAttribute(L"InUse", L"true");
  builder.WText(L"1.5");
  builder.EndNode();
  EXPECT_EQ(builder.QXML(), L"<Point Type=\"Single\" InUse=\"true\">1.5</Point>\n");
}

TEST(XMLBuilder, AnAttributeWrittenAgainIsReplaced) {
  XMLBuilder builder;
  builder.StartNode(L"a");
  builder.WAttribute(L"x", L"1");
  builder.WAttribute(L"x", L"2");
  EXPECT_EQ(builder.QXML(), L"<a x=\"2\" />\n");
}

TEST(XMLBuilder, ShowsTheDocumentSoFar) {
  XMLBuilder builder;
  builder.StartNode(L"a");
  EXPECT_EQ(builder.QXML(), L"<a />\n");
  builder.WNode(L"b", L"");
  EXPECT_EQ(builder.QXML(), L"<a>\n  <b />\n</a>\n");
}

TEST(XMLBuilder, ClosingMoreThanIsOpenDoesNothing) {
  XMLBuilder builder;
  builder.EndNode();
  builder.StartNode(L"a");
  builder.EndNode();
  builder.EndNode();
  builder.EndList();
  EXPECT_EQ(builder.QXML(), L"<a />\n");
}

TEST(XMLBuilder, WritesAProfileWithFullPrecision) {
  XMLBuilder builder;
  builder.StartNode(L"Curve");
  builder.WProfileNode({100.0, 100.1, 1.0 / 3.0}, {0.0, -1e-300, 1234567.0});
  EXPECT_EQ(builder.QXML(),
            L"<Curve>\n"
            L"  <Profile Count=\"3\">\n"
            L"    <X>100 100.1 0.3333333333333333</X>\n"
            L"    <Y>0 -1e-300 1234567</Y>\n"
            L"  </Profile>\n"
            L"</Curve>\n");
}

TEST(XMLBuilder, WritesAnEmptyProfile) {
  XMLBuilder builder;
  builder.WProfileNode({}, {});
  EXPECT_EQ(builder.QXML(), L"<Profile Count=\"0\">\n  <X></X>\n  <Y></Y>\n</Profile>\n");
}

TEST(XMLBuilder, WritesForeignTextAsItIs) {
  XMLBuilder builder;
  builder.WNode(L"a", L"\u00B5\U0001F9EA");
  EXPECT_EQ(builder.QXML(), L"<a>\u00B5\U0001F9EA</a>\n");
}

}  // namespace
