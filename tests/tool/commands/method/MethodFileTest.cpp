#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include <method/Samples.h>
#include <tool/TempFile.h>
#include <tool/commands/method/MethodFile.h>
#include "RecordCheck.h"

namespace tests {
namespace {

using namespace TslTool;
using TslBL::Method;

MethodFile Loaded(const std::string& content) {
  const TempFile file("a.method", content);
  return LoadMethod(file.Path());
}

// "PLACE: REASON" of the refusal, which names the file.
std::string ErrorOf(const std::string& content) {
  const TempFile file("a.method", content);
  try {
    LoadMethod(file.Path());
  } catch (const InputError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith(file.Path() + ": "));
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

std::string Xml() { return RecordBytes(SampleMethod(), RecordForm::Xml); }

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(MethodFile, ComesBackInEachForm) {
  for (const RecordForm form : {RecordForm::Xml, RecordForm::Binary}) {
    const Method kept = ThroughForm(SampleMethod(), form);
    const MethodFile loaded = Loaded(RecordBytes(kept, form));
    EXPECT_EQ(loaded.method, kept);
    EXPECT_EQ(loaded.form, form);
    EXPECT_TRUE(loaded.missing.empty());
  }
}

TEST(MethodFile, OlderBinaryVersionsAreMadeCurrent) {
  EXPECT_EQ(Loaded(GoldenBytes("Method.v3")).method, FromBytes<Method>(GoldenBytes("Method.v3")));
}

TEST(MethodFile, TakesTunesAndStatesInAnyOrder) {
  const std::string document =
      "<Method><Tunes><TunePair Id=\"7\"><Tune/></TunePair><TunePair Id=\"3\"><Tune/></TunePair></Tunes>"
      "<ValveMethod><Entry><Start>500</Start><State>Waste</State></Entry>"
      "<Entry><Start>0</Start><State>Source</State></Entry></ValveMethod></Method>";
  EXPECT_EQ(Loaded(document).method.Tunes.size(), 2u);
}

TEST(MethodFile, TakesIdsWithAnyBlanksBetween) {
  const std::string document =
      "<Method><TimePeriods><TimePeriod><Sequence><TuneRunIds>  1\n 2\t3 "
      "</TuneRunIds></Sequence></TimePeriod>"
      "</TimePeriods></Method>";
  EXPECT_EQ(Loaded(document).method.TimePeriods.at(0).Sequence.at(0), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(MethodFile, TellsWhatItsTunesLack) {
  const std::vector<std::string> missing =
      Loaded("<Method><Tunes><TunePair Id=\"7\"><Tune/></TunePair></Tunes></Method>").missing;
  EXPECT_THAT(missing, testing::Contains("tune 7: Tune/Control"));
}

TEST(MethodFile, NamesWhatWouldNotBeTaken) {
  const std::tuple<const char*, const char*, const char*> kFaults[] = {
      {"<Desc>", "<Title/><Desc>", "Method: unknown element \"Title\""},
      {"Timeout=\"60000\"", "Timeout=\"soon\"",
       "Method/TimePeriods/TimePeriod[1]@Timeout: \"soon\" is not a value for it"},
      {"Timeout=\"60000\"", "Timeouts=\"60000\"",
       "Method/TimePeriods/TimePeriod[1]: unknown attribute \"Timeouts\""},
      {"<TuneRunIds>1<", "<TuneRunIds>1,5<",
       "Method/TimePeriods/TimePeriod[1]/Sequence/TuneRunIds[1]: \"1,5\" is not a value for it"},
      {"<MZLow>", "<MZLow>x",
       "Method/Tunes/TunePair[1]/Tune/Control/MZLow: \"x500.5\" is not a value for it"},
      {"TunePair Id=\"4294967295\"", "TunePair Id=\"1\"", "Method/Tunes: two have the Id 1"},
      {"<Start>0<", "<Start>soon<",
       "Method/ValveMethod/Entry[1]/Start: \"soon\" is no whole number of milliseconds"},
      {"<Entry>", "<Entry><Start>0</Start><State>Source</State></Entry><Entry>",
       "Method/ValveMethod/Entry[2]/Start: \"0\" is the start of an earlier entry as well"},
      {"<State>Waste<", "<State>waste<",
       "Method/ValveMethod/Entry[1]/State: \"waste\" is neither Source nor Waste"},
      {"<State>Waste</State>", "", "Method/ValveMethod/Entry[1]: has no State"},
      {"<ValveMethod>", "<ValveMethod><Other/>", "Method/ValveMethod/Other[1]: is no Entry"},
      {"<DDInfo Type=\"None\" />", "<DDInfo Type=\"None\"><ExclDuration>5</ExclDuration></DDInfo>",
       "tune run 7: a DDInfo of the type None keeps nothing, and this one holds triggers"}};
  for (const auto& [from, to, error] : kFaults) EXPECT_EQ(ErrorOf(Replaced(Xml(), from, to)), error);
}

TEST(MethodFile, OfAnotherDocumentIsRefused) {
  EXPECT_EQ(ErrorOf("<Tune/>"), ": The document lacks the element \"Method\".");
}

TEST(MethodFile, NamesWhatIsWrongWithItsBytes) {
  EXPECT_EQ(ErrorOf(Bytes(9u)), ": is no method: Unknown Method version.");
  const std::string whole = RecordBytes(SampleMethod(), RecordForm::Binary);
  EXPECT_EQ(ErrorOf(whole.substr(0, whole.size() - 1)), ": is no method: Unexpected end of stream.");
  EXPECT_EQ(ErrorOf(whole + "xx"), "byte " + std::to_string(whole.size()) + ": 2 bytes behind the method");
  EXPECT_EQ(ErrorOf(""), ": the file is empty");
}

TEST(MethodFile, WithANumberThatIsNoneIsRefused) {
  Method method = SampleMethod();
  method.Inclusions[0].MZEnd = std::nan("");
  EXPECT_THAT(ErrorOf(RecordBytes(method, RecordForm::Binary)),
              testing::HasSubstr("is no number that an instrument takes"));
}

}  // namespace
}  // namespace tests
