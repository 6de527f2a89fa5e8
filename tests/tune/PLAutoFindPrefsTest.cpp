#include <tslbl/tune/PLAutoFindPrefs.h>

#include "RecordCheck.h"

namespace {

using namespace tests;
using TslBL::PLAutoFindPrefs;

// Everything that can be asked, in the order of the fields.
struct Answers {
  bool every = false;
  std::int32_t average = 0;
  bool save = false;
  bool display = true;
  bool smooth = false;
  bool decon = false;
  bool savePeaks = false;

  friend bool operator==(const Answers&, const Answers&) = default;
};

Answers Ask(const PLAutoFindPrefs& prefs) {
  Answers answers;
  answers.every = prefs.QEverySpectrumSelection();
  EXPECT_EQ(prefs.QPeakTableSelection(answers.average, answers.save), !answers.every);
  answers.display = prefs.QDisplayPList();
  answers.smooth = prefs.QSmoothSpectrum();
  answers.decon = prefs.QCSDecon();
  answers.savePeaks = prefs.QSavePeakList();
  return answers;
}

PLAutoFindPrefs Made(const Answers& answers) {
  PLAutoFindPrefs prefs;
  prefs.WPeakTableSelection(answers.average, answers.save);
  if (answers.every) prefs.WEverySpectrumSelection();
  prefs.WDisplayPList(answers.display);
  prefs.WSmoothSpectrum(answers.smooth);
  prefs.WCSDecon(answers.decon);
  prefs.WSavePeakList(answers.savePeaks);
  return prefs;
}

constexpr Answers kSample = {true, 1000, true, false, true, false, true};

// Each field away from its default.
const std::vector<Answers> kEach = {
    {},
    {true, 0, false, true, false, false, false},
    {false, -5, false, true, false, false, false},
    {false, 0, true, true, false, false, false},
    {false, 0, false, false, false, false, false},
    {false, 0, false, true, true, false, false},
    {false, 0, false, true, false, true, false},
    {false, 0, false, true, false, false, true},
    kSample,
};

// The reason for which bytes are refused; the preferences stay as they were.
std::string Refusal(const std::string& bytes) {
  PLAutoFindPrefs prefs = Made(kSample);
  try {
    TslBL::ReadBytes(bytes, prefs);
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(Ask(prefs), kSample) << "a failed reading changed the preferences";
    return e.what();
  }
  return "";
}

// ---- Choices -------------------------------------------------------------------------------

TEST(PLAutoFindPrefs, OfTheirOwnShowTheListAndDoNoMore) {
  EXPECT_EQ(Ask(PLAutoFindPrefs()), (Answers{false, 0, false, true, false, false, false}));
}

TEST(PLAutoFindPrefs, HoldEachChoice) {
  for (const Answers& answers : kEach) EXPECT_EQ(Ask(Made(answers)), answers);
}

TEST(PLAutoFindPrefs, EverySpectrumKeepsTheChoiceForAverages) {
  PLAutoFindPrefs prefs;
  prefs.WPeakTableSelection(3, true);
  prefs.WEverySpectrumSelection();
  std::int32_t average = 0;
  bool save = false;
  EXPECT_FALSE(prefs.QPeakTableSelection(average, save));
  EXPECT_EQ(average, 3);
  EXPECT_TRUE(save);
}

TEST(PLAutoFindPrefs, AveragesEndEverySpectrum) {
  PLAutoFindPrefs prefs;
  prefs.WEverySpectrumSelection();
  prefs.WPeakTableSelection(3, true);
  EXPECT_FALSE(prefs.QEverySpectrumSelection());
  prefs.WPeakTableSelection(4, false);
  std::int32_t average = 0;
  bool save = true;
  EXPECT_TRUE(prefs.QPeakTableSelection(average, save));
  EXPECT_EQ(average, 4);
  EXPECT_FALSE(save);
}

// ---- Binary --------------------------------------------------------------------------------

TEST(AllRecords, PLAutoFindPrefs) {
  const std::vector<FieldChange<PLAutoFindPrefs>> rows = {
      {"EverySpectrum", [](auto& p) { p.WEverySpectrumSelection(); }},
      {"AvgSpectrum", [](auto& p) { p.WPeakTableSelection(5, false); }},
      {"SaveSpectrum", [](auto& p) { p.WPeakTableSelection(0, true); }},
      {"DisplayPList", [](auto& p) { p.WDisplayPList(false); }},
      {"SmoothSpectrum", [](auto& p) { p.WSmoothSpectrum(true); }},
      {"CSDecon", [](auto& p) { p.WCSDecon(true); }},
      {"SavePeakList", [](auto& p) { p.WSavePeakList(true); }},
  };
  EXPECT_EQ(FieldFaults(rows), std::vector<std::string>());
}
TEST(Golden, PLAutoFindPrefs) {
  const char* write = std::getenv("TSLBL_WRITE_GOLDEN");
  if (write != nullptr && std::string(write) == "1")
    WriteGolden("PLAutoFindPrefs.v1", ToBytes(Made(kSample)));
  const std::string golden = GoldenBytes("PLAutoFindPrefs.v1");
  EXPECT_EQ(golden, ToBytes(Made(kSample)));
  EXPECT_EQ(Ask(FromBytes<PLAutoFindPrefs>(golden)), kSample);
}

TEST(PLAutoFindPrefsBinary, IsTheVersionAndTheFieldsInOrder) {
  for (const Answers& a : kEach) {
    const std::string bytes =
        Bytes(1u, a.every, a.average, a.save, a.display, a.smooth, a.decon, a.savePeaks);
    EXPECT_EQ(bytes.size(), 14u) << "a switch is one byte";
    EXPECT_EQ(ToBytes(Made(a)), bytes);
    EXPECT_EQ(Ask(FromBytes<PLAutoFindPrefs>(bytes, Made(kSample))), a);
  }
}

TEST(PLAutoFindPrefsBinary, StandInARow) {
  std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
  TslCommon::BinaryWriter writer(stream);
  writer << Made(kSample) << Made({});
  TslCommon::BinaryReader reader(stream);
  PLAutoFindPrefs first;
  PLAutoFindPrefs second;
  reader >> first >> second;
  EXPECT_EQ(Ask(first), kSample);
  EXPECT_EQ(Ask(second), Answers());
}

TEST(PLAutoFindPrefsBinary, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u, 4294967295u}) {
    std::string bytes = ToBytes(Made({}));
    bytes.replace(0, 4, Bytes(version));
    EXPECT_EQ(Refusal(bytes), "Unknown PLAutoFindPrefs version.");
  }
}

TEST(PLAutoFindPrefsBinary, CutShortIsRefused) {
  const std::string whole = ToBytes(Made({}));
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(Refusal(whole.substr(0, length)), "") << length;
  EXPECT_EQ(Refusal(whole), "");
}

// ---- Documents -----------------------------------------------------------------------------

Answers FromDocument(const std::wstring& xml, const Answers& before) {
  return Ask(FromXml(xml, Made(before)));
}

struct Child {
  const wchar_t* xml;
  Answers after;
};

TEST(PLAutoFindPrefsXml, EachChildReplacesItsField) {
  const Child children[] = {
      {L"", {false, 2, false, true, false, false, false}},
      {L"<EverySpectrum>true</EverySpectrum>", {true, 2, false, true, false, false, false}},
      {L"<AvgSpectrum>-7</AvgSpectrum>", {false, -7, false, true, false, false, false}},
      {L"<SaveSpectrum>true</SaveSpectrum>", {false, 2, true, true, false, false, false}},
      {L"<Display>false</Display>", {false, 2, false, false, false, false, false}},
      {L"<Smooth>true</Smooth>", {false, 2, false, true, true, false, false}},
      {L"<CSDecon>true</CSDecon>", {false, 2, false, true, false, true, false}},
      {L"<Save>true</Save>", {false, 2, false, true, false, false, true}},
  };
  const Answers before = {false, 2, false, true, false, false, false};
  for (const Child& child : children)
    EXPECT_EQ(FromDocument(std::wstring(L"<PLPref>") + child.xml + L"</PLPref>", before), child.after)
        << testing::PrintToString(child.xml);
}

TEST(PLAutoFindPrefsXml, EachChildReplacesItsFieldInAnyOrder) {
  EXPECT_EQ(FromDocument(L"<PLPref><Save>true</Save><CSDecon>false</CSDecon><Smooth>true</Smooth>"
                         L"<Display>false</Display><SaveSpectrum>true</SaveSpectrum>"
                         L"<AvgSpectrum>9</AvgSpectrum><EverySpectrum>false</EverySpectrum></PLPref>",
                         {true, 1, false, true, false, true, false}),
            (Answers{false, 9, true, false, true, false, true}));
}

TEST(PLAutoFindPrefsXml, OfEverySpectrumLeaveTheChoiceForAverages) {
  EXPECT_EQ(FromDocument(L"<PLPref><EverySpectrum>true</EverySpectrum><AvgSpectrum>5</AvgSpectrum>"
                         L"<SaveSpectrum>true</SaveSpectrum><Smooth>true</Smooth></PLPref>",
                         {false, 2, false, true, false, false, false}),
            (Answers{true, 2, false, true, true, false, false}));
}

TEST(PLAutoFindPrefsXml, OfEverySpectrumAsItWasLeaveTheChoiceForAverages) {
  EXPECT_EQ(FromDocument(L"<PLPref><AvgSpectrum>5</AvgSpectrum></PLPref>",
                         {true, 2, false, true, false, false, false}),
            (Answers{true, 2, false, true, false, false, false}));
}

TEST(PLAutoFindPrefsXml, WithoutTheElementChangeNothing) {
  for (const wchar_t* xml : {L"<Other/>", L"<Other><PLPref><Smooth>false</Smooth></PLPref></Other>"})
    EXPECT_EQ(FromDocument(xml, kSample), kSample);
}

TEST(PLAutoFindPrefsXml, LeavesTheElementBehind) {
  TslCommon::XMLParser parser;
  ASSERT_TRUE(
      parser.LoadText(L"<All><PLPref><Smooth>true</Smooth></PLPref>"
                      L"<PLPref><CSDecon>true</CSDecon></PLPref></All>"));
  PLAutoFindPrefs first;
  PLAutoFindPrefs second;
  parser.StartNode(L"All");
  parser >> first >> second;
  EXPECT_EQ(Ask(first), (Answers{false, 0, false, true, true, false, false}));
  EXPECT_EQ(Ask(second), (Answers{false, 0, false, true, false, true, false}));
}

}  // namespace
