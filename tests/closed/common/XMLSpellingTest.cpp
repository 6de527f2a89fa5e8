// Names and text on their way through a document, from XMLBuilder to XMLParser.

#include <gtest/gtest.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <set>
#include <vector>

namespace {

using namespace TslCommon;

std::wstring ElementNamed(const std::wstring& name) {
  XMLBuilder builder;
  builder.WNode(name.c_str(), L"");
  return builder.QXML();
}

std::wstring ElementHolding(const std::wstring& text) {
  XMLBuilder builder;
  builder.WNode(L"a", text);
  return builder.QXML();
}

const std::vector<std::wstring> kNames = {L"Smooth",
                                          L"Baseline Subtract",
                                          L" Blank first",
                                          L"_x0020_",
                                          L"_x0020",
                                          L"_x0020 ",
                                          L" x0020_",
                                          L"_x005F_x0020_",
                                          L"9 lives",
                                          L"-",
                                          L".",
                                          L"_",
                                          L"__",
                                          L"a-b.c_9",
                                          L"<&>\"'",
                                          L"a/b",
                                          L"m/z",
                                          L"\u00B5",
                                          L"Gr\u00F6\u00DFe",
                                          L"\u3000",
                                          L"\U0001F9EA",
                                          L"\x01\x7F",
                                          L"_xD83D_",
                                          L"_x0001F9EA_"};

TEST(XMLNames, KeepPlainNames) {
  EXPECT_EQ(ElementNamed(L"Q1-Step.9_a"), L"<Q1-Step.9_a />\n");
  EXPECT_EQ(ElementNamed(L"_xyz"), L"<_xyz />\n");
}

TEST(XMLNames, EncodeWhatXmlForbidsInThem) {
  EXPECT_EQ(ElementNamed(L"Baseline Subtract"), L"<Baseline_x0020_Subtract />\n");
  EXPECT_EQ(ElementNamed(L"9th"), L"<_x0039_th />\n");
  EXPECT_EQ(ElementNamed(L"a_x0020_"), L"<a_x005F_x0020_ />\n");
  EXPECT_EQ(ElementNamed(L"\U0001F9EA"), L"<_x0001F9EA_ />\n");
}

TEST(XMLNames, EveryNameFindsItsElementAgain) {
  for (const std::wstring& name : kNames) {
    XMLBuilder builder;
    builder.StartNode(name.c_str());
    builder.WAttribute(name.c_str(), L"value");
    builder.WNode(name.c_str(), L"text");
    builder.EndNode();
    XMLParser parser;
    ASSERT_TRUE(parser.LoadText(builder.QXML())) << ToUtf8(name) << ToUtf8(parser.QLoadError());
    ASSERT_TRUE(parser.StartNode(name.c_str())) << ToUtf8(name);
    std::wstring value, text;
    EXPECT_TRUE(parser.QAttribute(name.c_str(), value) && parser.QNode(name.c_str(), text)) << ToUtf8(name);
  }
}

TEST(XMLNames, DifferentNamesStayDifferent) {
  std::set<std::wstring> spellings;
  for (const std::wstring& name : kNames) spellings.insert(ElementNamed(name));
  EXPECT_EQ(spellings.size(), kNames.size());
}

std::vector<std::wstring> NastyTexts() {
  std::vector<std::wstring> texts = {L"",
                                     L" ",
                                     L"  \t ",
                                     L"\n",
                                     L"\r\n",
                                     L"\r",
                                     L"\t",
                                     L" leading",
                                     L"trailing ",
                                     L"two\r\nlines\r\n",
                                     L"old\rMac",
                                     L"<a>&amp;</a>",
                                     L"]]>",
                                     L"<![CDATA[x]]>",
                                     L"<!-- x -->",
                                     L"\"'",
                                     L"&#13;",
                                     L"&bomb;",
                                     L"\u00A0",
                                     L"\u2028\u0085",
                                     L"\U0001F9EA\U0010FFFF",
                                     L"\uFFFE\uFFFF",
                                     L"_x0020_",
                                     L"_x0001_",
                                     L"_x0001",
                                     L"_x005F_",
                                     L"_x005F_x0001_",
                                     L"_x0000_x0001_",
                                     L"_x000",
                                     L"_x0001\x01",
                                     L"_x005\x01",
                                     L"__x0001_",
                                     L"_xD800_",
                                     L"\xFEFF"};
  for (wchar_t c = 0; c < 0xA0; ++c) {
    texts.emplace_back(1, c);
    texts.push_back(L"a" + std::wstring(1, c) + L"b");
  }
  texts.emplace_back(1, static_cast<wchar_t>(0xD800));
  return texts;
}

TEST(XMLText, EveryTextSurvivesAsElementAttributeAndOwnText) {
  for (const std::wstring& text : NastyTexts()) {
    XMLBuilder builder;
    builder.StartNode(L"a");
    builder.WAttribute(L"attribute", text);
    builder.WText(text);
    builder.WNode(L"b", text);
    builder.EndNode();
    const std::wstring xml = builder.QXML();
    XMLParser parser;
    ASSERT_TRUE(parser.LoadText(xml)) << ToUtf8(xml) << ToUtf8(parser.QLoadError());
    parser.StartNode(L"a");
    std::wstring attribute = L"?", child = L"?";
    EXPECT_TRUE(parser.QAttribute(L"attribute", attribute) && parser.QNode(L"b", child));
    EXPECT_EQ(attribute, text) << ToUtf8(xml);
    EXPECT_EQ(child, text) << ToUtf8(xml);
    EXPECT_EQ(parser.QText(), text) << ToUtf8(xml);
  }
}

TEST(XMLText, HoldsNoCharacterThatXmlForbids) {
  for (const std::wstring& text : NastyTexts())
    for (const wchar_t c : ElementHolding(text)) {
      EXPECT_TRUE(c >= 0x20 || c == L'\t' || c == L'\n') << static_cast<int>(c);
      EXPECT_TRUE((c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF) << static_cast<int>(c);
    }
}

TEST(XMLText, SpellsWhatAReaderWouldChange) {
  EXPECT_EQ(ElementHolding(L"a<b>&\"c\""), L"<a>a&lt;b&gt;&amp;&quot;c&quot;</a>\n");
  EXPECT_EQ(ElementHolding(L"two\r\nlines"), L"<a>two&#13;\nlines</a>\n");
  EXPECT_EQ(ElementHolding(L" "), L"<a>&#32;</a>\n");
  EXPECT_EQ(ElementHolding(L"\x01"), L"<a>_x0001_</a>\n");
  EXPECT_EQ(ElementHolding(L"_x0001_"), L"<a>_x005F_x0001_</a>\n");
  EXPECT_EQ(ElementHolding(L"_x0041_"), L"<a>_x0041_</a>\n");
}

TEST(XMLText, ReadsOnlyTheCodesOfWhatXmlCannotHold) {
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<a>_x0041_ _x0001_ _x005F_ _x0001</a>"));
  std::wstring text;
  parser.QNode(L"a", text);
  EXPECT_EQ(text, L"_x0041_ \x01 _ _x0001");
}

}  // namespace
