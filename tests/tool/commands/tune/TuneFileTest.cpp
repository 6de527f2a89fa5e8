#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include <tool/TempFile.h>
#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/InputError.h>
#include <tslbl/tune/rules/DevTuneRules.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace tests {
namespace {

using testing::HasSubstr;
using TslBL::DevTuneRules;
using TslBL::Probes;
using TslBL::Tune;
using TslTool::RecordBytes;
using TslTool::TuneForm;

Tune Load(const std::string& content) {
  const TempFile file("a.tune", content);
  return TslTool::LoadTune(file.Path()).tune;
}

// "PLACE: REASON" of the refusal, which names the file.
std::string ErrorOf(const std::string& content) {
  const TempFile file("a.tune", content);
  try {
    TslTool::LoadTune(file.Path());
  } catch (const TslTool::InputError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith(file.Path() + ": "));
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

std::string Xml(const Tune& tune = DevTuneRules(Probes::ESI)) { return RecordBytes(tune, TuneForm::Xml); }

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(TuneFile, ComesBackInEachForm) {
  for (const Probes::ProbeTypes probe : {Probes::ESI, Probes::APCI, Probes::LowFlowESI}) {
    Tune tune = tests::SampleTune(probe);
    EXPECT_EQ(Load(RecordBytes(tune, TuneForm::Binary)), tune);
    // What a document does not keep: the entrance lens, numbers that are not in use.
    tune = TslTool::ThroughForm(tune, TuneForm::Xml);
    EXPECT_EQ(Load(Xml(tune)), tune);
  }
}

TEST(TuneFile, TheFormIsSeenFromTheContent) {
  const TempFile file("misleading.xml", RecordBytes(Tune(), TuneForm::Binary));
  EXPECT_EQ(TslTool::LoadTune(file.Path()).form, TuneForm::Binary);
  file.Write("\xEF\xBB\xBF \n" + Xml());
  EXPECT_EQ(TslTool::LoadTune(file.Path()).form, TuneForm::Xml);
}

TEST(TuneFile, TheNameAsksForAForm) {
  EXPECT_EQ(TslTool::FormOfName("a.xml"), TuneForm::Xml);
  EXPECT_EQ(TslTool::FormOfName("A.XML"), TuneForm::Xml);
  EXPECT_EQ(TslTool::FormOfName(".xml"), TuneForm::Xml);
  for (const char* name : {"a.tune", "xml", "a.xml.bin", ""})
    EXPECT_EQ(TslTool::FormOfName(name), TuneForm::Binary) << name;
}

TEST(TuneFile, OlderBinaryVersionsAreMadeCurrent) {
  for (const char* version : {"Tune.v1", "Tune.v2"}) {
    const Tune current = Load(tests::GoldenBytes(version));
    EXPECT_EQ(Load(RecordBytes(current, TuneForm::Binary)), current) << version;
  }
}

TEST(TuneFile, ADocumentNeedNotHoldEverything) {
  const Tune tune = Load("<Tune><Control><MZLow>100</MZLow></Control></Tune>");
  EXPECT_EQ(tune.ControlData.MZLow, 100.0);
  EXPECT_EQ(tune.ControlData.MZHi, 0.0);
}

TEST(TuneFile, OtherWordsForAValueAreTaken) {
  struct Row {
    const char* from;
    const char* to;
  };
  // Once, as it holds the time at which it is made.
  const std::string xml = Xml();
  for (const auto& [from, to] :
       {Row{"ESI (0)", "esi"}, Row{"ESI (0)", "Esi (0)"}, Row{"<Q1PolePolarity>false", "<Q1PolePolarity>0"},
        Row{"<MZHi>3000", "<MZHi> 3.000e3 "}, Row{">Positive", ">positive"}}) {
    EXPECT_EQ(Load(Replaced(xml, from, to)), Load(xml)) << to;
  }
}

TEST(TuneFile, TheTagsOfEitherProbeAreTaken) {
  const Tune esi = Load(
      "<Tune><Source><Type>ESI</Type><Corona>-100</Corona><CoronaCurrent>3</CoronaCurrent></Source></Tune>");
  EXPECT_EQ(esi.Source.Cylinder, -100);
  EXPECT_EQ(esi.Source.CoronaCurrent, 3.0);
  EXPECT_EQ(Load("<Tune><Source><Type>APCI</Type><Cylinder>70</Cylinder></Source></Tune>").Source.Cylinder,
            70);
}

TEST(TuneFile, ABadValueIsNamedWithItsPlace) {
  struct Row {
    const char* from;
    const char* to;
    const char* message;
  };
  for (const auto& [from, to, message] :
       {Row{"<MZHi>3000<", "<MZHi>abc<", "Tune/Control/MZHi: \"abc\" is not a value for it"},
        Row{"<MZHi>3000<", "<MZHi>3000x<", "Tune/Control/MZHi: \"3000x\" is not a value for it"},
        Row{"<ScansPerSpec>1<", "<ScansPerSpec>1.5<", "Tune/Control/ScansPerSpec: \"1.5\" is not"},
        Row{"<ScansPerSpec>1<", "<ScansPerSpec>-1<", "Tune/Control/ScansPerSpec: \"-1\" is not"},
        Row{"<HEDynode>-7000<", "<HEDynode>99999999999<", "Tune/Control/HEDynode: \"99999999999\" is not"},
        Row{"<Type>Scan<", "<Type>Sweep<", "Tune/Control/Type: \"Sweep\" is not"},
        Row{"<Type>Scan<", "<Type>sim<", "Tune/Control/Type: \"sim\" is not"},
        Row{"ESI (0)", "MALDI", "Tune/Source/Type: \"MALDI\" is not"},
        Row{"ESI (0)", "ESI (1)", "Tune/Source/Type: \"ESI (1)\" is not"},
        Row{"<Q1PolePolarity>false", "<Q1PolePolarity>maybe",
            "Tune/Control/Q1PolePolarity: \"maybe\" is not"},
        Row{"<MZHi>3000</MZHi>", "<MZHigh>3000</MZHigh>", "Tune/Control: unknown element \"MZHigh\""},
        Row{"IOPt Type=\"Single\"", "IOPt Type=\"Fixed\"",
            "Tune/Control/CapExit/IOPt@Type: \"Fixed\" is not"},
        Row{"MassDAC=\"100\"", "MassDAC=\"lots\"", "Tune/MZCalPts/MZCal[1]@MassDAC: \"lots\" is not"},
        Row{"MassDAC=\"100\"", "MassDAQ=\"100\"", "Tune/MZCalPts/MZCal[1]: unknown attribute \"MassDAQ\""},
        Row{"Name=\"CapExit\"", "Name=\"CapExt\"",
            "Tune/Q1CalPts/Q1Cal[1]/IOPtFlds/IOPtFld[1]@Name: \"CapExt\" is not"}}) {
    EXPECT_THAT(ErrorOf(Replaced(Xml(), from, to)), HasSubstr(message));
  }
}

TEST(TuneFile, ANumberThatIsNoneIsRefused) {
  for (const char* none : {"inf", "-inf", "infinity", "nan", "1e999"}) {
    EXPECT_THAT(ErrorOf(Replaced(Xml(), ">160<", ">" + std::string(none) + "<")),
                HasSubstr("Tune/Control/CapExit/IOPt: \"" + std::string(none) + "\" is not a value for it"));
  }
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.MZHi = std::nan("");
  EXPECT_THAT(ErrorOf(RecordBytes(tune, TuneForm::Binary)),
              HasSubstr("Tune/Control/MZHi: \"nan\" is no number that an instrument takes"));
  tune.ControlData.MZHi = 3000;
  tune.MZCalPts[0].MZ = -HUGE_VAL;
  EXPECT_THAT(ErrorOf(RecordBytes(tune, TuneForm::Binary)), HasSubstr("MZCal@MZ: \"-inf\" is no number"));
}

TEST(TuneFile, ANameMayLookLikeNoNumber) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.Info.Name = L"inf";
  tune.MZCalPts[0].Name = L"nan";
  EXPECT_EQ(Load(RecordBytes(tune, TuneForm::Binary)), tune);
}

TEST(TuneFile, FieldsOfACalibrantMayStandInAnyOrder) {
  const std::string a = "<IOPtFld Name=\"CapExit\">100</IOPtFld>";
  const std::string b = "<IOPtFld Name=\"Skimmer\">25</IOPtFld>";
  const auto with = [](const std::string& fields) {
    return Load("<Tune><Q1CalPts><Q1Cal MZ=\"39\"><IOPtFlds>" + fields +
                "</IOPtFlds></Q1Cal></Q1CalPts></Tune>");
  };
  EXPECT_EQ(with(a + b), with(b + a));
  EXPECT_EQ(with(b + a).Q1CalPts.at(0).Fields.size(), 2u);
}

TEST(TuneFile, AnElementTooManyIsRefused) {
  EXPECT_EQ(ErrorOf(Replaced(Xml(), "<MZLow>5</MZLow>", "<MZLow>5</MZLow><MZLow>6</MZLow>")),
            "Tune/Control: one element too many: \"MZLow\"");
}

TEST(TuneFile, ADocumentTypeIsRefused) {
  EXPECT_NE(ErrorOf("<!DOCTYPE x [<!ENTITY a \"b\">]>" + Xml().substr(Xml().find("<Tune>"))), "");
}

TEST(TuneFile, ElementsThatADocumentLacksAreListed) {
  const TempFile file("a.xml",
                      Replaced(Replaced(Xml(), "<MZLow>5</MZLow>", ""), "<HEDynode>-7000</HEDynode>", ""));
  EXPECT_EQ(TslTool::LoadTune(file.Path()).missing,
            (std::vector<std::string>{"Tune/Control/MZLow", "Tune/Control/HEDynode"}));
  file.Write(Xml());
  EXPECT_TRUE(TslTool::LoadTune(file.Path()).missing.empty());
}

TEST(TuneFile, WhatIsNoTuneIsRefused) {
  EXPECT_THAT(ErrorOf(""), HasSubstr("the file is empty"));
  EXPECT_THAT(ErrorOf("<Tone/>"), HasSubstr("The document lacks the element \"Tune\"."));
  EXPECT_THAT(ErrorOf("<Tune><Info></Tune>"), HasSubstr("line 1, column"));
  EXPECT_THAT(ErrorOf("hello"), HasSubstr("is no tune: Unknown Tune version."));
  EXPECT_THAT(ErrorOf(std::string("\x04\0\0\0", 4)), HasSubstr("is no tune: Unknown Tune version."));
}

TEST(TuneFile, BinaryCutAnywhereIsRefused) {
  const std::string bytes = RecordBytes(DevTuneRules(Probes::APCI), TuneForm::Binary);
  for (std::size_t size = 1; size < bytes.size(); size += 7)
    EXPECT_THAT(ErrorOf(bytes.substr(0, size)), HasSubstr("is no tune: ")) << size;
}

TEST(TuneFile, BytesBehindTheTuneAreRefused) {
  const std::string bytes = RecordBytes(Tune(), TuneForm::Binary);
  EXPECT_EQ(ErrorOf(bytes + "abc"), "byte " + std::to_string(bytes.size()) + ": 3 bytes behind the tune");
}

TEST(TuneFile, ADocumentCutAnywhereIsRefused) {
  const std::string text = Xml();
  const std::size_t end = text.rfind('>');
  for (std::size_t size = 1; size < end; size += 97) EXPECT_NE(ErrorOf(text.substr(0, size)), "") << size;
}

TEST(TuneFile, AFileBeyondAnyTuneIsRefused) {
  const std::string xml = Xml();
  EXPECT_EQ(Load(xml + std::string(900000, '\n')), Load(xml));
  EXPECT_EQ(ErrorOf(Xml() + std::string(1 << 20, '\n')), ": the file is too large for a tune");
}

TEST(TuneFile, AMissingFileOrAFolderIsNamed) {
  const TempFile file("a.tune", "");
  EXPECT_THROW(TslTool::LoadTune(file.Path() + ".none"), TslTool::InputError);
  EXPECT_THROW(TslTool::LoadTune(file.Folder()), TslTool::InputError);
}

}  // namespace
}  // namespace tests
