#include <tslbl/method/Method.h>

#include <tslbl/closed/common/XMLResultException.h>
#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;
using timebase::MSEC;

DiverterValveMethod OneState(std::int32_t start) {
  DiverterValveMethod program;
  program.AddState(MSEC(start), DiverterValve(DiverterValve::kToSource));
  return program;
}

Method WithTimeouts(std::initializer_list<std::uint32_t> timeouts) {
  Method method;
  for (const std::uint32_t timeout : timeouts) method.TimePeriods.emplace_back().Timeout = timeout;
  return method;
}

// The bytes of a method as version 3 had them: without the valve.
std::string BytesOfVersion3(const Method& method) {
  std::string bytes = ToBytes(method);
  bytes.resize(bytes.size() - ToBytes(method.ValveMethod).size());
  return bytes.replace(0, 4, Bytes(3u));
}

TEST(AllRecords, Method) {
  CheckRecord<Method>({
      {"Desc", [](auto& r) { r.Desc = L"text"; }},
      {"Tunes", [](auto& r) { r.Tunes[3]; }},
      {"Tunes.Id",
       [](auto& r) {
         r.Tunes = {{4, Tune()}};
       }},
      {"Tunes.Tune", [](auto& r) { r.Tunes[3].Info = SampleTuneInfo(); }},
      {"TuneRuns", [](auto& r) { r.TuneRuns[3] = TuneRun(1, 1); }},
      {"TuneRuns.Id",
       [](auto& r) {
         r.TuneRuns = {{4, TuneRun(1, 1)}};
       }},
      {"TuneRuns.TuneRun", [](auto& r) { r.TuneRuns[3] = SampleTuneRun(); }},
      {"TimePeriods", [](auto& r) { r.TimePeriods.resize(1); }},
      {"TimePeriods.first", [](auto& r) { r.TimePeriods[0] = SampleTimePeriod(); }},
      {"Exclusions", [](auto& r) { r.Exclusions.resize(1); }},
      {"Exclusions.first", [](auto& r) { r.Exclusions[0] = SampleDDFilter(); }},
      {"Inclusions", [](auto& r) { r.Inclusions.resize(1); }},
      {"Inclusions.first", [](auto& r) { r.Inclusions[0] = SampleDDFilter(); }},
      {"ValveMethod", [](auto& r) { r.ValveMethod = SampleValveMethod(); }},
  });
}

TEST(Golden, Method) { CheckGolden(SampleMethod(), "Method.v4"); }

TEST(Method, CutShortIsRefused) {
  Method method;
  method.TuneRuns[1] = TuneRun(2, 1);
  method.TimePeriods = {SampleTimePeriod()};
  method.ValveMethod = SampleValveMethod();
  CheckCutShort(method);
}

TEST(Method, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 1u, 2u, 5u})
    EXPECT_EQ(ReadFailure<Method>(Bytes(version), SampleMethod()), "Unknown Method version.");
}

TEST(Method, WithHugeCountsIsRefused) {
  EXPECT_EQ(ReadFailure<Method>(Bytes(4u, std::wstring(), 4294967295u)), "Unknown Tune version.");
}

TEST(Golden, MethodOfVersion3HasAValveThatMovesAtItsEnd) {
  Method expected = WithTimeouts({60000, 60000});
  expected.Desc = L"Old";
  expected.TuneRuns = {{1, TuneRun(5, 1)}};
  expected.TimePeriods[0].Loops = 20;
  expected.TimePeriods[0].Sequence = {{1}};
  expected.ValveMethod = OneState(120000);
  EXPECT_EQ(FromBytes<Method>(GoldenBytes("Method.v3")), expected);
}

TEST(Method, OfVersion3WithATimePeriodWithoutEndCountsIn32Bits) {
  EXPECT_EQ(FromBytes<Method>(BytesOfVersion3(WithTimeouts({0xFFFFFFFF, 60000}))).ValveMethod,
            OneState(59999));
  EXPECT_EQ(FromBytes<Method>(BytesOfVersion3(WithTimeouts({0x80000000}))).ValveMethod,
            OneState(std::numeric_limits<std::int32_t>::min()));
}

TEST(Method, OfVersion3WithoutTimePeriodsHasAValveAtItsBegin) {
  EXPECT_EQ(FromBytes<Method>(BytesOfVersion3(Method())).ValveMethod, OneState(0));
}

TEST(Method, HasNoStatesWhereTheWordOfTheValveIsNo1) {
  std::string bytes = BytesOfVersion3(Method()).replace(0, 4, Bytes(4u)) + Bytes(2u);
  EXPECT_EQ(FromBytes<Method>(bytes), Method());
}

TEST(Method, ReplacesWhatItHeldByWhatIsRead) {
  Method method = SampleMethod();
  TslBL::ReadBytes(ToBytes(Method()), method);
  EXPECT_EQ(method, Method());
}

TEST(Method, OfTwoTunesOfOneIdInBytesTheLastStays) {
  Tune named;
  named.Info.Name = L"last";
  const std::string bytes = Bytes(4u, std::wstring(), 2u, 6u) + ToBytes(Tune()) + Bytes(6u) + ToBytes(named) +
                            Bytes(0u, 0u, 0u, 0u) + ToBytes(DiverterValveMethod());
  EXPECT_EQ(FromBytes<Method>(bytes).Tunes, (std::map<std::uint32_t, Tune>{{6, named}}));
}

TEST(Method, IsAnElementWithItsLists) {
  Method method;
  method.Desc = L"Two runs";
  method.TuneRuns = {{1, TuneRun(1, 1)}, {2, TuneRun(1, 5)}};
  method.TimePeriods = {SampleTimePeriod()};
  method.Inclusions = {SampleDDFilter()};
  EXPECT_EQ(ToXml(method),
            L"<Method>\n"
            L"  <Desc>Two runs</Desc>\n"
            L"  <Tunes />\n"
            L"  <TuneRuns>\n"
            L"    <TuneRunPair Id=\"1\">\n"
            L"      <TuneRun TuneId=\"1\" Records=\"1\" SettleDelay=\"0\">\n"
            L"        <DDInfo Type=\"None\" />\n"
            L"      </TuneRun>\n"
            L"    </TuneRunPair>\n"
            L"    <TuneRunPair Id=\"2\">\n"
            L"      <TuneRun TuneId=\"1\" Records=\"5\" SettleDelay=\"0\">\n"
            L"        <DDInfo Type=\"None\" />\n"
            L"      </TuneRun>\n"
            L"    </TuneRunPair>\n"
            L"  </TuneRuns>\n"
            L"  <TimePeriods>\n"
            L"    <TimePeriod Save=\"false\" Loops=\"20\" Timeout=\"60000\" SettleDelay=\"500000\">\n"
            L"      <Sequence>\n"
            L"        <TuneRunIds>1</TuneRunIds>\n"
            L"        <TuneRunIds>2 4</TuneRunIds>\n"
            L"        <TuneRunIds>3</TuneRunIds>\n"
            L"      </Sequence>\n"
            L"    </TimePeriod>\n"
            L"  </TimePeriods>\n"
            L"  <Exclusions />\n"
            L"  <Inclusions>\n"
            L"    <DDFilter MZStart=\"499.5\" MZEnd=\"500.25\" TimeStart=\"1000\" TimeEnd=\"4294967295\" />\n"
            L"  </Inclusions>\n"
            L"  <ValveMethod />\n"
            L"</Method>\n");
}

TEST(Method, HasEachTuneInAPairWithItsId) {
  Method method;
  method.Tunes = {{7, Tune()}};
  const std::wstring xml = ToXml(method);
  EXPECT_NE(xml.find(L"<Tunes>\n    <TunePair Id=\"7\">\n      <Tune>"), std::wstring::npos) << xml.c_str();
}

TEST(Method, HasNothingOfWhatTheDocumentHasNoListOf) {
  EXPECT_EQ(FromXml(L"<Method><Desc /></Method>", SampleMethod()), Method());
}

TEST(Method, KeepsItsDescriptionWhereTheDocumentHasNone) {
  EXPECT_EQ(FromXml(L"<Method />", SampleMethod()).Desc, SampleMethod().Desc);
}

TEST(Method, IsRequiredOfItsDocument) { EXPECT_THROW(FromXml<Method>(L"<Tune />"), XMLResultException); }

TEST(Method, TakesAForeignElementInAListForNothing) {
  EXPECT_TRUE(FromXml<Method>(L"<Method><TuneRuns><Other /></TuneRuns></Method>").TuneRuns.empty());
}

TEST(Method, HasNoDump) { EXPECT_EQ(DumpOf(SampleMethod()), L""); }

TEST(Method, HandsOutItsValveProgramAndTakesAnother) {
  Method method;
  method.WValveMethod(SampleValveMethod());
  EXPECT_EQ(method.QValveMethod(), SampleValveMethod());
}

class TunePairs : public testing::Test {
 protected:
  static std::map<std::uint32_t, Tune> Loaded(const std::wstring& xml,
                                              std::map<std::uint32_t, Tune> tunes = {}) {
    XMLParser parser;
    EXPECT_TRUE(parser.LoadText(L"<Run>" + xml + L"</Run>"));
    EXPECT_TRUE(parser.StartNode(L"Run"));
    LoadTune(parser, tunes);
    return tunes;
  }
  static std::wstring Added(std::uint32_t id, const Tune& tune) {
    XMLBuilder builder;
    AddTune(builder, {id, tune});
    return builder.QXML();
  }
};

TEST_F(TunePairs, AreElementsWithIdAndTune) {
  EXPECT_EQ(Added(7, Tune()).rfind(L"<TunePair Id=\"7\">\n  <Tune>\n", 0), 0u);
}

TEST_F(TunePairs, AreReadAsTheyWereWritten) {
  EXPECT_EQ(Loaded(Added(4294967295, Tune())), (std::map<std::uint32_t, Tune>{{4294967295, Tune()}}));
}

TEST_F(TunePairs, ChangeNothingWhereNoneFollows) {
  const std::map<std::uint32_t, Tune> tunes = {{7, SampleTune()}};
  EXPECT_EQ(Loaded(L"<Tune />", tunes), tunes);
}

TEST_F(TunePairs, ReplaceATuneOfTheirId) {
  EXPECT_EQ(Loaded(Added(7, Tune()), {{7, SampleTune()}}), (std::map<std::uint32_t, Tune>{{7, Tune()}}));
}

TEST_F(TunePairs, WithoutATuneAreRefused) {
  std::map<std::uint32_t, Tune> tunes = {{7, SampleTune()}};
  const std::map<std::uint32_t, Tune> before = tunes;
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<TunePair Id=\"7\" />"));
  EXPECT_THROW(LoadTune(parser, tunes), XMLResultException);
  EXPECT_EQ(tunes, before);
}

TEST_F(TunePairs, HaveTheId0WithoutOne) {
  EXPECT_TRUE(Loaded(L"<TunePair><Tune /></TunePair>").contains(0));
  EXPECT_TRUE(Loaded(L"<TunePair Id=\"x\"><Tune /></TunePair>").contains(0));
}

}  // namespace
