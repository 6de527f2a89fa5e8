#include <tslbl/method/ValveMethod.h>

#include <boost/lexical_cast.hpp>

#include <tslbl/closed/common/XMLResultException.h>
#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;
using timebase::MSEC;
using States = std::vector<std::pair<std::int32_t, std::uint32_t>>;

// All states by the cursor, on a copy.
States StatesOf(DiverterValveMethod program) {
  States states;
  if (program.IsEmpty()) return states;
  auto entry = program.QFirstState();
  do states.emplace_back(entry.first.count, entry.second.State());
  while (program.QNextState(entry));
  return states;
}

DiverterValveMethod Program(const States& states) {
  DiverterValveMethod program;
  for (const auto& [start, state] : states) program.AddState(MSEC(start), DiverterValve(state));
  return program;
}

std::wstring Document(const std::wstring& entries) { return L"<ValveMethod>" + entries + L"</ValveMethod>"; }
std::wstring Entry(const std::wstring& start, const std::wstring& state) {
  return L"<Entry><Start>" + start + L"</Start><State>" + state + L"</State></Entry>";
}

// What reading the document raises.
XMLResultException FailureOf(const std::wstring& document) {
  XMLParser parser;
  EXPECT_TRUE(parser.LoadText(document));
  DiverterValveMethod program;
  try {
    program.Serialize(parser);
  } catch (const XMLResultException& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing was raised";
  return {L"", L"", 0, 0, L""};
}

TEST(DiverterValveMethod, IsEmptyAtFirst) { EXPECT_TRUE(DiverterValveMethod().IsEmpty()); }

TEST(DiverterValveMethod, KeepsItsStatesInTheOrderOfTime) {
  EXPECT_EQ(StatesOf(Program({{5000, 1}, {-3, 0}, {0, 1}})), (States{{-3, 0}, {0, 1}, {5000, 1}}));
}

TEST(DiverterValveMethod, OfTwoStatesOfOneTimeTheLastCounts) {
  EXPECT_EQ(StatesOf(Program({{1000, 0}, {1000, 1}})), (States{{1000, 1}}));
}

TEST(DiverterValveMethod, HasNoNextStateAfterTheOnlyOne) {
  DiverterValveMethod program = Program({{0, 1}});
  std::pair<MSEC, DiverterValve> entry = program.QFirstState();
  EXPECT_FALSE(program.QNextState(entry));
  EXPECT_FALSE(program.QNextState(entry));
}

TEST(DiverterValveMethod, LeavesTheEntryAloneBehindTheLastState) {
  DiverterValveMethod program = Program({{0, 1}});
  program.QFirstState();
  std::pair<MSEC, DiverterValve> entry{MSEC(42), DiverterValve(7)};
  EXPECT_FALSE(program.QNextState(entry));
  EXPECT_EQ(entry, (std::pair<MSEC, DiverterValve>{MSEC(42), DiverterValve(7)}));
}

TEST(DiverterValveMethod, HasNoNextStateWithoutStates) {
  DiverterValveMethod program;
  std::pair<MSEC, DiverterValve> entry;
  EXPECT_FALSE(program.QNextState(entry));
}

TEST(DiverterValveMethod, HasNoFirstStateWithoutStates) {
  EXPECT_THROW(DiverterValveMethod().QFirstState(), std::out_of_range);
}

TEST(DiverterValveMethod, FindsWhatWasAddedBehindTheCursor) {
  DiverterValveMethod program = Program({{0, 1}});
  std::pair<MSEC, DiverterValve> entry = program.QFirstState();
  program.AddState(MSEC(10), DiverterValve(0));
  EXPECT_TRUE(program.QNextState(entry));
  EXPECT_EQ(entry.first, MSEC(10));
}

TEST(DiverterValveMethod, CopiesStandOnTheirFirstState) {
  DiverterValveMethod program = Program({{0, 1}, {10, 0}, {20, 1}});
  std::pair<MSEC, DiverterValve> entry = program.QFirstState();
  program.QNextState(entry);
  DiverterValveMethod copy = program;
  DiverterValveMethod assigned;
  assigned = program;
  for (DiverterValveMethod* other : {&copy, &assigned}) {
    ASSERT_TRUE(other->QNextState(entry));
    EXPECT_EQ(entry.first, MSEC(10));
  }
}

TEST(DiverterValveMethod, CopiesShareNothing) {
  DiverterValveMethod program = Program({{0, 1}});
  DiverterValveMethod copy = program;
  copy.AddState(MSEC(10), DiverterValve(0));
  EXPECT_EQ(StatesOf(program), (States{{0, 1}}));
  EXPECT_NE(copy, program);
}

TEST(DiverterValveMethod, EqualsOneOfTheSameStatesWhereverItsCursorStands) {
  DiverterValveMethod program = SampleValveMethod();
  std::pair<MSEC, DiverterValve> entry = program.QFirstState();
  program.QNextState(entry);
  EXPECT_EQ(program, SampleValveMethod());
  EXPECT_NE(program, Program({{0, 1}}));
  EXPECT_NE(Program({{0, 1}}), Program({{0, 0}}));
  EXPECT_NE(Program({{0, 1}}), Program({{1, 1}}));
}

TEST(Golden, DiverterValveMethod) { CheckGolden(SampleValveMethod(), "DiverterValveMethod"); }

TEST(DiverterValveMethod, IsA1AndItsStatesInBytes) {
  EXPECT_EQ(ToBytes(Program({{0, 1}, {600, 0}})), Bytes(1u, 2u, 0, 1u, 600, 0u));
}

TEST(DiverterValveMethod, StaysAsItWasWhereTheWordIsNo1) {
  for (const std::uint32_t word : {0u, 2u, 4294967295u}) {
    std::istringstream stream(Bytes(word, 1u, 0, 1u));
    TslCommon::BinaryReader reader(stream);
    DiverterValveMethod program = SampleValveMethod();
    program.Serialize(reader);
    EXPECT_EQ(program, SampleValveMethod());
    EXPECT_EQ(stream.tellg(), 4) << "the stream stands behind the word";
  }
}

TEST(DiverterValveMethod, ReplacesItsStatesByThoseOfTheBytes) {
  EXPECT_EQ(FromBytes<DiverterValveMethod>(Bytes(1u, 0u)), DiverterValveMethod());
  DiverterValveMethod program = SampleValveMethod();
  TslBL::ReadBytes(Bytes(1u, 1u, 5, 0u), program);
  EXPECT_EQ(StatesOf(program), (States{{5, 0}}));
}

TEST(DiverterValveMethod, OfTwoEntriesOfOneTimeInBytesTheFirstCounts) {
  EXPECT_EQ(StatesOf(FromBytes<DiverterValveMethod>(Bytes(1u, 2u, 5, 0u, 5, 1u))), (States{{5, 0}}));
}

TEST(DiverterValveMethod, CutShortIsRefused) { CheckCutShort(SampleValveMethod()); }

TEST(DiverterValveMethod, IsAListOfEntries) {
  EXPECT_EQ(ToXml(SampleValveMethod()),
            L"<ValveMethod>\n"
            L"  <Entry>\n"
            L"    <Start>0</Start>\n"
            L"    <State>Waste</State>\n"
            L"  </Entry>\n"
            L"  <Entry>\n"
            L"    <Start>90000</Start>\n"
            L"    <State>Source</State>\n"
            L"  </Entry>\n"
            L"</ValveMethod>\n");
}

TEST(DiverterValveMethod, SurvivesADocument) {
  EXPECT_EQ(FromXml<DiverterValveMethod>(ToXml(SampleValveMethod())), SampleValveMethod());
}

TEST(DiverterValveMethod, IsEmptyWhereTheDocumentHasNoList) {
  EXPECT_TRUE(FromXml(L"<Other />", SampleValveMethod()).IsEmpty());
}

TEST(DiverterValveMethod, OfTwoEntriesOfOneTimeTheFirstCounts) {
  EXPECT_EQ(StatesOf(FromXml<DiverterValveMethod>(Document(Entry(L"5", L"Source") + Entry(L"5", L"Waste")))),
            (States{{5, 0}}));
}

TEST(DiverterValveMethod, RequiresOfEachEntryAllThatItHas) {
  const std::tuple<const wchar_t*, unsigned, const wchar_t*> kLacking[] = {
      {L"<Other />", 90, L"Entry"},
      {L"<Entry><State>Source</State></Entry>", 93, L"Start"},
      {L"<Entry><Start>0</Start></Entry>", 97, L"State"}};
  for (const auto& [entry, line, element] : kLacking) {
    const XMLResultException failure = FailureOf(Document(entry));
    EXPECT_EQ(failure.File(), L"ValveMethod");
    EXPECT_EQ(failure.Function(), L"`anonymous-namespace'::ReadMethodNode");
    EXPECT_EQ(failure.Line(), line);
    EXPECT_EQ(failure.ResourceId(), 1051u);
    EXPECT_EQ(failure.Message(), L"The document lacks the element \"" + std::wstring(element) + L"\".");
  }
}

TEST(DiverterValveMethod, RefusesAnotherStateWhateverItsCase) {
  for (const wchar_t* state : {L"source", L"WASTE", L"Unknown", L"", L"1"}) {
    const XMLResultException failure = FailureOf(Document(Entry(L"0", state)));
    EXPECT_EQ(failure.File(), L"ValveMethod");
    EXPECT_EQ(failure.Function(), L"`anonymous-namespace'::DiverterValveFromText");
    EXPECT_EQ(failure.Line(), 77u);
    EXPECT_EQ(failure.ResourceId(), 1056u);
    EXPECT_EQ(failure.Message(),
              L"Expected valve state (Source,Waste) but instead got " + std::wstring(state));
  }
}

TEST(DiverterValveMethod, RefusesAStartThatIsNoNumber) {
  for (const wchar_t* start : {L"", L"soon", L"1.5", L"10x", L"2147483648"}) {
    XMLParser parser;
    ASSERT_TRUE(parser.LoadText(Document(Entry(L"7", L"Waste") + Entry(start, L"Source"))));
    DiverterValveMethod program = SampleValveMethod();
    try {
      program.Serialize(parser);
      ADD_FAILURE() << start;
    } catch (const std::bad_cast& failure) {
      EXPECT_STREQ(failure.what(), "bad cast");
    }
    EXPECT_EQ(StatesOf(program), (States{{7, 1}})) << "the entries before it stay";
  }
}

}  // namespace
