// mzML as other programs write it: what is unusual and still right.
//
// Tests: MzMLFile.cpp, MzMLElement.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/io/MzMLReading.h>

#include <cmath>
#include <regex>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::Scan;

constexpr const char* kInteger32 = "MS:1000519";
constexpr const char* kInteger64 = "MS:1000522";

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

TEST(MzMLDialects, IntegersOf32And64Bits) {
  const Values mz = {100, 200, 300, 70000}, counts = {0, 2147483647, -3, 5};
  for (const char* packing : {kPlain, kZlib}) {
    const auto packed = [&](const std::string& bytes) { return packing == kZlib ? Deflate(bytes) : bytes; };
    for (const bool wide : {false, true}) {
      const auto array = [&](const char* what, const Values& v) {
        return ArrayOf(what, packed(wide ? BytesOf<std::int64_t>(v) : BytesOf<std::int32_t>(v)),
                       wide ? kInteger64 : kInteger32, packing);
      };
      const Scan scan = ReadArrays(array(kMz, mz), array(kIntensity, counts));
      EXPECT_EQ(scan.mz, mz);
      EXPECT_EQ(scan.amplitude, counts);
    }
  }
}

TEST(MzMLDialects, AWideIntegerKeepsWhatADoubleHolds) {
  const Values counts = {0, 9007199254740992.0, 1099511627776.0, 7};
  EXPECT_EQ(ReadArrays(MzArray(), ArrayOf(kIntensity, BytesOf<std::int64_t>(counts), kInteger64)).amplitude,
            counts);
}

TEST(MzMLDialects, ArraysInAnyOrderAndAmongOthers) {
  const std::string noise = ArrayOf("MS:1002744", BytesOf<double>({9, 9}), "MS:9999999");
  EXPECT_EQ(ReadArrays(noise + IntensityArray() + noise, MzArray() + noise).mz, kAxis);
  EXPECT_EQ(ReadArrays(noise + IntensityArray() + noise, MzArray() + noise).amplitude, kCounts);
}

TEST(MzMLDialects, BinaryTextInCdataAndBesideComments) {
  const std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  for (const auto& [before, behind] : std::vector<std::pair<std::string, std::string>>{
           {"<binary><![CDATA[", "]]></binary>"},
           {"<binary>\n<![CDATA[\n", "\n]]>\n</binary>"},
           {"<binary><!-- <x>AAAA</x> -->", "<!-- > --></binary>"},
           {"<binary><?pi < ?>", "</binary>"}}) {
    const Scan scan = ReadText(Replaced(Replaced(text, "</binary>", behind), "<binary>", before)).at(0);
    EXPECT_EQ(scan.mz, kAxis) << before;
    EXPECT_EQ(scan.amplitude, kCounts) << before;
  }
}

TEST(MzMLDialects, ACommentInTheMiddleOfBinaryText) {
  std::string array = MzArray();
  array.insert(array.find("<binary>") + 13, "<!-- here -->");
  EXPECT_EQ(ReadArrays(array, IntensityArray()).mz, kAxis);
}

TEST(MzMLDialects, TermsInCommentsAreNone) {
  const std::string terms = "<!--" + Term(kCentroid) + "-->" + Term(kProfile);
  EXPECT_EQ(ReadText(MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), terms))).at(0).representation,
            Scan::Profile);
}

TEST(MzMLDialects, NamespacePrefixes) {
  const std::string groups =
      "<referenceableParamGroup id=\"s\">" + Term(kProfile) + "</referenceableParamGroup>";
  const std::string spectrum =
      SpectrumOf("scan=7", 4, MzArray() + IntensityArray(),
                 "<referenceableParamGroupRef ref=\"s\"/>" + Term("MS:1000511", "value=\"2\""));
  const std::string plain = MzML(spectrum + spectrum, 2, groups);
  const std::string text = std::regex_replace(plain, std::regex("<(/?)([a-zA-Z])"), "<$1ms:$2");
  ASSERT_THAT(text, HasSubstr("<ms:mzML"));
  const auto scans = ReadText(text);
  ASSERT_EQ(scans.size(), 2U);
  EXPECT_EQ(scans[1].number, 7U);
  EXPECT_EQ(scans[1].msLevel, 2);
  EXPECT_EQ(scans[1].representation, Scan::Profile);
  EXPECT_EQ(scans[1].rtSeconds, 120);
  EXPECT_EQ(scans[1].mz, kAxis);
  EXPECT_EQ(scans[1].amplitude, kCounts);
}

TEST(MzMLDialects, AnotherRootIsNamedWithItsPrefix) {
  EXPECT_EQ(ErrorOf("<ms:svg></ms:svg>"), "line 1: the root element is <ms:svg>, not <mzML>");
}

TEST(MzMLDialects, GroupsHoldRepresentationLevelAndPolarity) {
  const std::string groups = "<referenceableParamGroup id=\"s\">" + Term(kCentroid) +
                             Term("MS:1000511", "value=\"3\"") + Term("MS:1000129") +
                             "</referenceableParamGroup>";
  const Scan scan = ReadText(MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(),
                                             "<referenceableParamGroupRef ref=\"s\"/>"),
                                  1, groups))
                        .at(0);
  EXPECT_EQ(scan.representation, Scan::Centroid);
  EXPECT_EQ(scan.msLevel, 3);
  EXPECT_EQ(scan.polarity, -1);
}

TEST(MzMLDialects, GroupsHoldStartTimeAndPolarityOfTheScan) {
  const std::string groups = "<referenceableParamGroup id=\"t\">" +
                             Term("MS:1000016", "value=\"2500\" unitAccession=\"UO:0000028\"") +
                             Term("MS:1000130") + "</referenceableParamGroup>";
  const std::string bare = "<scan><referenceableParamGroupRef ref=\"t\"/></scan>";
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts), 1, groups);
  const std::size_t at = text.find("<scan>");
  text.replace(at, text.find("</scan>") + 7 - at, bare);
  const Scan scan = ReadText(text).at(0);
  EXPECT_EQ(scan.rtSeconds, 2.5);
  EXPECT_EQ(scan.polarity, 1);
}

TEST(MzMLDialects, UnitsOfTime) {
  const std::vector<std::pair<std::string, double>> table = {{"UO:0000010", 2},   {"UO:0000028", 0.002},
                                                             {"UO:0000031", 120}, {"UO:0000032", 7200},
                                                             {"MS:1000038", 120}, {"MS:1000039", 2}};
  for (const auto& [unit, seconds] : table) {
    const auto text = MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), "",
                                      "value=\"2\" unitAccession=\"" + unit + "\""));
    EXPECT_DOUBLE_EQ(ReadText(text).at(0).rtSeconds, seconds) << unit;
  }
}

// The first scan of a text, and the warnings.
std::pair<Scan, std::vector<std::string>> WithWarnings(const std::string& text) {
  const TempFile file("run.mzML", text);
  const auto source = TslTool::OpenScans(file.Path());
  std::pair<Scan, std::vector<std::string>> result;
  source->Next(result.first);
  for (Scan more; source->Next(more);) {
  }
  result.second = source->Warnings();
  return result;
}

TEST(MzMLDialects, AUnitThatIsNoneOfTimeGivesNoTime) {
  const auto [scan, warnings] = WithWarnings(MzML(
      SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), "", "value=\"2\" unitAccession=\"UO:0000008\"")));
  EXPECT_TRUE(std::isnan(scan.rtSeconds));
  EXPECT_THAT(warnings,
              ElementsAre("1 spectrum with a start time in a unit that is none of time, taken as unknown "
                          "(first at line 5, spectrum \"scan=1\")"));
}

TEST(MzMLDialects, AWrongEncodedLengthIsToldAndTheTextRead) {
  const std::string spectrum = PlainSpectrum("scan=1", kAxis, kCounts);
  for (const char* wrong : {"encodedLength=\"40\"", "encodedLength=\"\"", "encodedLength=\"-1\""}) {
    const auto [scan, warnings] = WithWarnings(MzML(Replaced(spectrum, "encodedLength=\"44\"", wrong)));
    EXPECT_EQ(scan.mz, kAxis);
    EXPECT_EQ(scan.amplitude, kCounts);
    EXPECT_THAT(warnings,
                ElementsAre(HasSubstr("with an encodedLength that its text has not, read as the text is")));
  }
  EXPECT_THAT(WithWarnings(MzML(spectrum)).second, IsEmpty());
}

TEST(MzMLDialects, AMissingEncodedLengthIsNoTrouble) {
  const std::string spectrum = PlainSpectrum("scan=1", kAxis, kCounts);
  const auto [scan, warnings] = WithWarnings(MzML(Replaced(spectrum, "encodedLength=\"44\"", "")));
  EXPECT_EQ(scan.amplitude, kCounts);
  EXPECT_THAT(warnings, IsEmpty());
}

TEST(MzMLDialects, ProfilePointsInAnyOrderAreSortedAndTold) {
  const auto [scan, warnings] =
      WithWarnings(MzML(PlainSpectrum("scan=1", {103, 101, 104, 102}, {3, 1, 4, 2})));
  EXPECT_THAT(scan.mz, ElementsAre(101, 102, 103, 104));
  EXPECT_THAT(scan.amplitude, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(warnings, ElementsAre(HasSubstr("m/z out of order, sorted")));
}

TEST(MzMLDialects, EqualScanNumbersStayAndTheIdsTellThemApart) {
  const auto scans = ReadText(MzML(PlainSpectrum("function=1 process=0 scan=5", kAxis, kCounts) +
                                       PlainSpectrum("function=2 process=0 scan=5", kAxis, kCounts),
                                   2));
  ASSERT_EQ(scans.size(), 2U);
  EXPECT_EQ(scans[0].number, 5U);
  EXPECT_EQ(scans[1].number, 5U);
  EXPECT_EQ(scans[1].id, "function=2 process=0 scan=5");
}

TEST(MzMLDialects, EntitiesInAnIdAreReplaced) {
  EXPECT_EQ(ReadText(MzML(PlainSpectrum("a&lt;b&#x41;", kAxis, kCounts))).at(0).id, "a<bA");
}

TEST(MzMLDialects, WhatTheScannerLetsPassAndIsNoXmlIsRefused) {
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  text.insert(text.find("<scanList"), std::string(1, '\0'));
  EXPECT_NE(ErrorOf(text), "");
}

// As the first edition of the format had it: the terms of a spectrum stand in a description, its scan beside
// them, and units of time are terms of the same vocabulary.
std::string OldSpectrum(const std::string& nativeId, const std::string& scan) {
  return "<spectrum index=\"0\" id=\"S1\" nativeID=\"" + nativeId + "\" defaultArrayLength=\"4\">\n" +
         Term("MS:1000511", "value=\"2\"") + "<spectrumDescription>" + Term(kProfile) +
         "<acquisitionList count=\"1\"><acquisition number=\"1\"/></acquisitionList>" + scan +
         "</spectrumDescription><binaryDataArrayList count=\"2\">" + MzArray() + IntensityArray() +
         "</binaryDataArrayList></spectrum>\n";
}

std::string OldFile(const std::string& spectra) {
  return Replaced(MzML(spectra), "version=\"1.1.0\"", "version=\"1.0.0\"");
}

TEST(MzMLDialects, TheFirstEditionIsRead) {
  const std::string time = Term("MS:1000016", "value=\"2\" unitAccession=\"MS:1000038\"");
  const auto scans = ReadText(OldFile(OldSpectrum("19", "<scan>" + time + Term("MS:1000129") + "</scan>")));
  ASSERT_EQ(scans.size(), 1U);
  EXPECT_EQ(scans[0].number, 19U);
  EXPECT_EQ(scans[0].id, "scan=19");
  EXPECT_EQ(scans[0].msLevel, 2);
  EXPECT_EQ(scans[0].polarity, -1);
  EXPECT_EQ(scans[0].rtSeconds, 120.0);
  EXPECT_EQ(scans[0].representation, Scan::Profile);
  EXPECT_EQ(scans[0].mz, kAxis);
  EXPECT_EQ(scans[0].amplitude, kCounts);
}

TEST(MzMLDialects, ANativeIdOfTheFirstEditionIsTheNameOfItsScan) {
  const std::pair<const char*, const char*> table[] = {
      {"7", "scan=7"}, {"scan=7", "scan=7"}, {"function=1 scan=7", "function=1 scan=7"}, {"a7", "a7"}};
  for (const auto& [native, id] : table) {
    EXPECT_EQ(ReadText(OldFile(OldSpectrum(native, ""))).at(0).id, id) << native;
  }
}

TslTool::IdFormat IdsOf(const std::string& terms) {
  const TempFile file(
      "a.mzML",
      MzML("", 0, "<fileDescription><sourceFileList>" + terms + "</sourceFileList></fileDescription>"));
  return TslTool::OpenScans(file.Path())->Ids();
}

std::string SourceOf(const std::string& accession, const std::string& name) {
  return "<sourceFile><cvParam accession=\"" + accession + "\" name=\"" + name + "\"/></sourceFile>";
}

TEST(MzMLDialects, HowIdsAreBuiltIsThatOfTheFirstSourceThatTells) {
  const std::string none = SourceOf("MS:1000824", "no nativeID format");
  const std::string other = SourceOf("MS:1000563", "Thermo RAW format");
  const std::string thermo = SourceOf("MS:1000768", "Thermo nativeID format");
  const std::string waters = SourceOf("MS:1000769", "Waters nativeID format");
  EXPECT_EQ(IdsOf(none + other + thermo + waters).accession, "MS:1000768");
  EXPECT_EQ(IdsOf(none + other + thermo + waters).name, "Thermo nativeID format");
  EXPECT_EQ(IdsOf(none + other).accession, "");
  EXPECT_EQ(IdsOf(SourceOf("XX:1", "my nativeID format")).accession, "");
}

}  // namespace
}  // namespace tests
