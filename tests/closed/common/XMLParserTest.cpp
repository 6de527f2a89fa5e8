// Tests: XMLParser.cpp, XMLTree.cpp.
#include <gtest/gtest.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/closed/common/XMLResultException.h>
#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <vector>

namespace {

using namespace TslCommon;

// A file of this test alone, removed with it.
class File {
 public:
  explicit File(const std::string& bytes)
      : path_(std::filesystem::temp_directory_path() /
              ("XMLParserTest." + std::to_string(getpid()) + ".xml")) {
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  ~File() { std::filesystem::remove(path_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  std::wstring Path() const { return FromUtf8(path_.string()); }

 private:
  std::filesystem::path path_;
};

struct Parsed : XMLParser {
  explicit Parsed(const std::wstring& xml) { EXPECT_TRUE(LoadText(xml)) << ToUtf8(QLoadError()); }
};

std::wstring Child(const XMLParser& parser, const wchar_t* name) {
  std::wstring text = L"absent";
  parser.QNode(name, text);
  return text;
}

TEST(XMLParser, DescendsAndComesBack) {
  Parsed parser(L"<a><b><c>1</c></b><d>2</d></a>");
  EXPECT_TRUE(parser.StartNode(L"a") && parser.StartNode(L"b"));
  EXPECT_EQ(Child(parser, L"c"), L"1");
  EXPECT_EQ(Child(parser, L"d"), L"absent");
  parser.EndNode();
  EXPECT_EQ(Child(parser, L"d"), L"2");
}

TEST(XMLParser, StaysWhereItIsIfAChildIsAbsent) {
  Parsed parser(L"<a><b>1</b></a>");
  EXPECT_FALSE(parser.StartNode(L"b"));
  EXPECT_TRUE(parser.StartNode(L"a"));
  EXPECT_FALSE(parser.StartNode(L"z"));
  EXPECT_EQ(Child(parser, L"b"), L"1");
}

TEST(XMLParser, LeavesTheTextAloneWhereNothingIsFound) {
  Parsed parser(L"<a/>");
  parser.StartNode(L"a");
  std::wstring text = L"old";
  EXPECT_FALSE(parser.QNode(L"b", text));
  EXPECT_FALSE(parser.QAttribute(L"b", text));
  EXPECT_EQ(text, L"old");
}

TEST(XMLParser, FindsAnElementWithoutText) {
  Parsed parser(L"<a><b/><c></c></a>");
  parser.StartNode(L"a");
  EXPECT_EQ(Child(parser, L"b"), L"");
  EXPECT_EQ(Child(parser, L"c"), L"");
}

TEST(XMLParser, ReadsEqualSiblingsInTheirOrder) {
  Parsed parser(L"<a><p>1</p><q>x</q><p>2</p><q>y</q><p>3</p></a>");
  parser.StartNode(L"a");
  std::wstring read;
  while (parser.StartNode(L"p")) {
    read += parser.QText();
    parser.EndNode();
    if (parser.StartNode(L"q")) {
      read += parser.QText();
      parser.EndNode();
    }
  }
  EXPECT_EQ(read, L"1x2y3");
  EXPECT_FALSE(parser.StartNode(L"p"));
}

TEST(XMLParser, ReadsEqualSiblingsOfEachParentAnew) {
  Parsed parser(L"<a><l><p>1</p><p>2</p></l><l><p>3</p></l></a>");
  parser.StartNode(L"a");
  std::wstring read;
  for (; parser.StartNode(L"l"); parser.EndNode())
    for (; parser.StartNode(L"p"); parser.EndNode()) read += parser.QText();
  EXPECT_EQ(read, L"123");
}

TEST(XMLParser, CountsTheElementsOfAList) {
  Parsed parser(L"<a><l> <p/>text<!-- c --><p/><q/></l><e/></a>");
  parser.StartNode(L"a");
  int count = -1;
  EXPECT_TRUE(parser.StartList(L"l", count));
  EXPECT_EQ(count, 3);
  parser.EndList();
  EXPECT_TRUE(parser.StartList(L"e", count));
  EXPECT_EQ(count, 0);
}

TEST(XMLParser, LeavesTheCountAloneIfTheListIsAbsent) {
  Parsed parser(L"<a/>");
  int count = 7;
  EXPECT_FALSE(parser.StartList(L"l", count));
  EXPECT_EQ(count, 7);
}

TEST(XMLParser, ReadsAMillionSiblingsInTimeLinearInThem) {
  std::wstring xml = L"<a>";
  for (int i = 0; i < 1000000; ++i) xml += L"<p>1</p>";
  Parsed parser(xml + L"</a>");
  parser.StartNode(L"a");
  int read = 0;
  for (; parser.StartNode(L"p"); parser.EndNode()) ++read;
  EXPECT_EQ(read, 1000000);
}

TEST(XMLParser, RaisesForARequiredChildThatIsAbsent) {
  Parsed parser(L"<a/>");
  EXPECT_NO_THROW(parser.StartRequiredNode(L"a"));
  try {
    parser.StartRequiredNode(L"Entry");
    FAIL() << "nothing was raised";
  } catch (const XMLResultException& e) {
    EXPECT_EQ(e.ResourceId(), 1051u);
    EXPECT_EQ(e.Message(), L"The document lacks the element \"Entry\".");
  }
}

TEST(XMLParser, ClosingMoreThanIsOpenDoesNothing) {
  Parsed parser(L"<a><b>1</b></a>");
  parser.EndNode();
  EXPECT_TRUE(parser.StartNode(L"a"));
  parser.EndNode();
  parser.EndNode();
  EXPECT_EQ(Child(parser, L"a"), L"");
}

TEST(XMLParser, GathersTextAroundCommentsAndCData) {
  Parsed parser(L"<a>one<!-- c --> two<![CDATA[ <3> ]]></a>");
  EXPECT_EQ(Child(parser, L"a"), L"one two <3> ");
}

TEST(XMLParser, ResolvesTheMarkupOfCharacters) {
  Parsed parser(L"<a b='&lt;&#9;&quot;'>&lt;&gt;&amp;&apos;&quot;&#181;&#x1F9EA;</a>");
  EXPECT_EQ(Child(parser, L"a"), L"<>&'\"\u00B5\U0001F9EA");
  parser.StartNode(L"a");
  std::wstring value;
  parser.QAttribute(L"b", value);
  EXPECT_EQ(value, L"<\t\"");
}

TEST(XMLParser, IgnoresBlanksBetweenElements) {
  Parsed parser(L"<?xml version='1.0'?>\n<!-- c -->\n<a>\r\n  <b>1</b>\r\n  <b>2</b>\r\n</a>\n<!-- c -->\n");
  parser.StartNode(L"a");
  EXPECT_EQ(parser.QText(), L"");
  EXPECT_EQ(Child(parser, L"b"), L"1");
}

TEST(XMLParser, StandsOnAnEmptyDocumentAtFirst) {
  XMLParser parser;
  EXPECT_FALSE(parser.StartNode(L"a"));
  EXPECT_EQ(parser.QText(), L"");
  EXPECT_EQ(parser.QLoadError(), L"");
}

TEST(XMLParser, StartsAnewWithEachDocument) {
  Parsed parser(L"<a><b/></a>");
  parser.StartNode(L"a");
  ASSERT_TRUE(parser.LoadText(L"<c/>"));
  EXPECT_TRUE(parser.StartNode(L"c"));
}

// Each with the start of the reason that the reader of the document is told.
const struct {
  const char* xml;
  const wchar_t* reason;
} kMalformed[] = {
    {"", L"line 1, column 1: No document element found"},
    {" \n ", L"line 2, column 2: No document element found"},
    {"<!-- only a comment -->", L"line 1, column 24: No document element found"},
    {"<?xml version='1.0'?>", L"line 1, column 22: No document element found"},
    {"plain text", L"line 1, column 1: Text outside the document element"},
    {"<a/>\ngarbage", L"line 2, column 1: Text outside the document element"},
    {"garbage<a/>", L"line 1, column 1: Text outside the document element"},
    {"<a/>\n<b/>", L"line 2, column 2: More than one document element"},
    {"<a", L"line 1, column"},
    {"<a>", L"line 1, column"},
    {"<a>\n<b>\n</a>", L"line 3, column"},
    {"<a></b>", L"line 1, column"},
    {"</a>", L"line 1, column"},
    {"<a b></a>", L"line 1, column"},
    {"<a b=1></a>", L"line 1, column"},
    {"<a b='1></a>", L"line 1, column"},
    {"<a b='1'c='2'/>", L"line 1, column"},
    {"<1a/>", L"line 1, column"},
    {"<>", L"line 1, column"},
    {"< a/>", L"line 1, column"},
    {"<a><!-- open</a>", L"line 1, column"},
    {"<a><![CDATA[open</a>", L"line 1, column"},
    {"<a><?open</a>", L"line 1, column"},
    {"<a>\x01\x02</b>", L"line 1, column"},
    {"\xFF\xFE\xFF", L"line 1, column"},
    {"<!DOCTYPE a><a/>", L"line 1, column 11: A document type declaration is not supported"},
    {"<!DOCTYPE a [", L"line 1, column"},
};

TEST(XMLParser, RefusesMalformedDocumentsAndTellsThePlace) {
  for (const auto& [xml, reason] : kMalformed) {
    const File file(xml);
    XMLParser parser;
    EXPECT_FALSE(parser.LoadFile(file.Path())) << xml;
    EXPECT_EQ(parser.QLoadError().substr(0, std::wcslen(reason)), reason)
        << xml << ": " << ToUtf8(parser.QLoadError());
    EXPECT_FALSE(parser.StartNode(L"a")) << xml;
  }
}

TEST(XMLParser, RefusesEveryBeginningOfADocument) {
  const std::wstring whole = L"<?xml version='1.0'?><!-- c --><a b='1'><c>text</c><![CDATA[x]]></a>";
  XMLParser parser;
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(parser.LoadText(whole.substr(0, length))) << length;
  EXPECT_TRUE(parser.LoadText(whole));
}

TEST(XMLParser, ExpandsNoEntitiesOfADocumentType) {
  std::wstring bomb = L"<!DOCTYPE lolz [<!ENTITY e0 'ha'>";
  for (int i = 1; i < 20; ++i) {
    const std::wstring before = L"&e" + ToText(std::int32_t{i - 1}) + L";";
    bomb += L"<!ENTITY e" + ToText(std::int32_t{i}) + L" '" + before + before + before + before + L"'>";
  }
  XMLParser parser;
  EXPECT_FALSE(parser.LoadText(bomb + L"]><a>&e19;</a>"));
  EXPECT_FALSE(parser.LoadText(L"<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a>&x;</a>"));
}

TEST(XMLParser, KeepsTheTextOfAnUnknownEntity) {
  Parsed parser(L"<a>&unknown; & more</a>");
  EXPECT_EQ(Child(parser, L"a"), L"&unknown; & more");
}

std::wstring Nested(int depth) {
  std::wstring xml;
  for (int i = 0; i < depth; ++i) xml += L"<a>";
  for (int i = 0; i < depth; ++i) xml += L"</a>";
  return xml;
}

TEST(XMLParser, TakesElementsNested256Deep) {
  XMLParser parser;
  EXPECT_TRUE(parser.LoadText(Nested(256)));
  EXPECT_FALSE(parser.LoadText(Nested(257)));
  EXPECT_EQ(parser.QLoadError(), L"elements are nested too deeply");
}

TEST(XMLParser, RefusesElementsNestedWithoutEnd) {
  XMLParser parser;
  EXPECT_FALSE(parser.LoadText(Nested(100000)));
  std::wstring open;
  for (int i = 0; i < 100000; ++i) open += L"<a>";
  EXPECT_FALSE(parser.LoadText(open));
}

TEST(XMLParser, ReadsAFile) {
  const File file("\xEF\xBB\xBF<a>\xC2\xB5</a>");
  XMLParser parser;
  ASSERT_TRUE(parser.LoadFile(file.Path()));
  EXPECT_EQ(Child(parser, L"a"), L"\u00B5");
}

TEST(XMLParser, ReadsAFileInAnotherEncoding) {
  std::string utf16 = "\xFF\xFE";
  for (const char c : std::string("<a>5</a>")) utf16 += c, utf16 += '\0';
  const File file(utf16);
  XMLParser parser;
  ASSERT_TRUE(parser.LoadFile(file.Path()));
  EXPECT_EQ(Child(parser, L"a"), L"5");
}

TEST(XMLParser, ReadsAFileInTheEncodingOfItsDeclaration) {
  const File file("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xB5</a>");
  XMLParser parser;
  ASSERT_TRUE(parser.LoadFile(file.Path()));
  EXPECT_EQ(Child(parser, L"a"), L"\u00B5");
}

TEST(XMLParser, ReadsAWideTextAsItStandsWhateverItDeclares) {
  const Parsed parser(L"<?xml version='1.0' encoding='ISO-8859-1'?><a>\u00B5</a>");
  EXPECT_EQ(Child(parser, L"a"), L"\u00B5");
}

TEST(XMLParser, RefusesAZeroByteThatWouldHideTheRest) {
  const File file(std::string("<a>1</a>\n\0<garbage", 19));
  XMLParser parser;
  EXPECT_FALSE(parser.LoadFile(file.Path()));
  EXPECT_EQ(parser.QLoadError(), L"line 2, column 1: A zero byte");
}

TEST(XMLParser, TellsThatReadingFailedHalfWay) {
  XMLParser parser;
  EXPECT_FALSE(parser.LoadFile(L"/proc/self/mem"));  // a file whose first byte cannot be read
  EXPECT_EQ(parser.QLoadError(), L"the file cannot be read");
}

TEST(XMLParser, TellsThatAFileCannotBeRead) {
  XMLParser parser;
  for (const wchar_t* path : {L"", L"/no/such/file.xml", L"/tmp"}) {
    EXPECT_FALSE(parser.LoadFile(path)) << ToUtf8(path);
    EXPECT_EQ(parser.QLoadError(), L"the file cannot be read");
  }
}

TEST(XMLParser, ForgetsTheDocumentThatAFailedLoadingReplaces) {
  Parsed parser(L"<a/>");
  EXPECT_FALSE(parser.LoadFile(L"/no/such/file.xml"));
  EXPECT_FALSE(parser.StartNode(L"a"));
}

}  // namespace
