// Tests: MzMLArray.cpp, MzMLHead.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/io/MzMLReading.h>

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::InputError;
using TslTool::OpenScans;
using TslTool::Scan;
using TslTool::ScanFilter;

struct Encoding {
  std::string name, type, packing;
  std::string (*encode)(const Values&);
};

void PrintTo(const Encoding& encoding, std::ostream* out) { *out << encoding.name; }

class MzMLEncodings : public testing::TestWithParam<Encoding> {};

TEST_P(MzMLEncodings, GiveTheSameArrays) {
  const auto& [name, type, packing, encode] = GetParam();
  const Scan scan = ReadArrays(ArrayOf(kMz, encode(kAxis), type, packing),
                               ArrayOf(kIntensity, encode(kCounts), type, packing));
  EXPECT_EQ(scan.mz, kAxis);
  EXPECT_EQ(scan.amplitude, kCounts);
}

INSTANTIATE_TEST_SUITE_P(
    MzMLFile, MzMLEncodings,
    testing::Values(
        Encoding{"Float64", kFloat64, kPlain, BytesOf<double>},
        Encoding{"Float32", kFloat32, kPlain, BytesOf<float>},
        Encoding{"Float64Zlib", kFloat64, kZlib, [](const Values& v) { return Deflate(BytesOf<double>(v)); }},
        Encoding{"Float32Zlib", kFloat32, kZlib, [](const Values& v) { return Deflate(BytesOf<float>(v)); }},
        Encoding{"TwoTermsOfZlibAndNumpress", kZlib, kLinear,
                 [](const Values& v) { return Deflate(NumpressLinear(v, 1e5)); }},
        Encoding{"NumpressLinear", kFloat64, kLinear,
                 [](const Values& v) { return NumpressLinear(v, 1e5); }}),
    [](const auto& encoding) { return encoding.param.name; });

TEST(MzMLFile, ReadsNumpressPicAsCounts) {
  const Scan scan = ReadArrays(MzArray(), ArrayOf(kIntensity, NumpressPic(kCounts), kFloat64, kPic));
  EXPECT_EQ(scan.amplitude, kCounts);
}

TEST(MzMLFile, ReadsNumpressSlofWithinItsRounding) {
  const Scan scan = ReadArrays(MzArray(), ArrayOf(kIntensity, NumpressSlof(kCounts, 10000), kFloat64, kSlof));
  ASSERT_EQ(scan.amplitude.size(), kCounts.size());
  for (std::size_t i = 0; i < kCounts.size(); ++i) {
    EXPECT_NEAR(scan.amplitude[i], kCounts[i], (kCounts[i] + 1) * 0.5e-4);
  }
}

TEST(MzMLFile, ReadsNumpressInsideZlib) {
  const std::string packed = Deflate(NumpressLinear(kAxis, 1e5));
  EXPECT_EQ(ReadArrays(ArrayOf(kMz, packed, kFloat64, "MS:1002746"), IntensityArray()).mz, kAxis);
}

TEST(MzMLFile, ReadsALongNumpressSeriesWithDifferencesOfBothSigns) {
  Values mz;
  for (int i = 0; i < 500; ++i) mz.push_back(100 + i * 0.125 + 0.05 * std::sin(i));
  const std::string arrays = ArrayOf(kMz, NumpressLinear(mz, 1e6), kFloat64, kLinear) +
                             ArrayOf(kIntensity, BytesOf<double>(Values(500, 1)));
  const Scan scan = ReadText(MzML(SpectrumOf("scan=1", 500, arrays))).at(0);
  ASSERT_EQ(scan.mz.size(), mz.size());
  for (std::size_t i = 0; i < mz.size(); ++i) EXPECT_NEAR(scan.mz[i], mz[i], 0.6e-6) << i;
}

TEST(MzMLFile, TellsWhatTheSpectrumTells) {
  const Scan scan = ReadText(MzML(PlainSpectrum("controllerType=0 scan=17", kAxis, kCounts))).at(0);
  EXPECT_EQ(scan.number, 17u);
  EXPECT_EQ(scan.id, "controllerType=0 scan=17");
  EXPECT_EQ(scan.msLevel, 1);
  EXPECT_EQ(scan.representation, Scan::Profile);
  EXPECT_EQ(scan.rtSeconds, 120);
}

TEST(MzMLFile, AnIdThatIsNotUtf8IsLatin1) {
  EXPECT_EQ(ReadText(MzML(PlainSpectrum("probe=Fl\xe4 scan=17", kAxis, kCounts))).at(0).id,
            "probe=Fl\xc3\xa4 scan=17");
}

TEST(MzMLFile, NumbersByPositionWhereTheIdHasNoScanNumber) {
  const auto scans =
      ReadText(MzML(PlainSpectrum("index=7", kAxis, kCounts) + PlainSpectrum("scan=", kAxis, kCounts) +
                        PlainSpectrum("subscan=9", kAxis, kCounts),
                    3));
  EXPECT_EQ(scans.at(0).number, 1u);
  EXPECT_EQ(scans.at(1).number, 2u);
  EXPECT_EQ(scans.at(2).number, 3u);
}

TEST(MzMLFile, NumbersByPositionWhereTheScanNumberDoesNotFit) {
  EXPECT_EQ(ReadText(MzML(PlainSpectrum("scan=99999999999", kAxis, kCounts))).at(0).number, 1u);
}

TEST(MzMLFile, FunctionsAreThoseThatIdsCount) {
  const auto functionOf = [](const std::string& id) {
    return ReadText(MzML(PlainSpectrum(id, kAxis, kCounts))).at(0).function;
  };
  EXPECT_EQ(functionOf("function=2 process=0 scan=1"), 2u);
  EXPECT_EQ(functionOf("sample=1 period=1 cycle=9 experiment=3"), 3u);
  EXPECT_EQ(functionOf("controllerType=0 controllerNumber=1 scan=4"), 0u);
  EXPECT_EQ(functionOf("malfunction=2 scan=4"), 0u);
  EXPECT_EQ(functionOf("function=two scan=4"), 0u);
}

TEST(MzMLFile, SpectraOfACalibrationAreTold) {
  const std::string arrays =
      ArrayOf(kMz, BytesOf<double>(kAxis)) + ArrayOf(kIntensity, BytesOf<double>(kCounts));
  const std::string text = MzML(SpectrumOf("scan=1", kAxis.size(), arrays, Term("MS:1000928")) +
                                    PlainSpectrum("scan=2", kAxis, kCounts),
                                2);
  EXPECT_TRUE(ReadText(text).at(0).isOfCalibration);
  EXPECT_FALSE(ReadText(text).at(1).isOfCalibration);
}

TEST(MzMLFile, LeavesOpenWhatTheSpectrumDoesNotTell) {
  const std::string bare = "<spectrum index=\"0\" id=\"a\" defaultArrayLength=\"0\"/>";
  const Scan scan = ReadText(MzML(bare)).at(0);
  EXPECT_TRUE(std::isnan(scan.rtSeconds));
  EXPECT_EQ(scan.msLevel, 0);
  EXPECT_EQ(scan.representation, Scan::Unknown);
  EXPECT_THAT(scan.mz, IsEmpty());
}

TEST(MzMLFile, ReadsSecondsAsSeconds) {
  const auto spectrum =
      SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), "", "value=\"2.5\" unitAccession=\"UO:0000010\"");
  EXPECT_EQ(ReadText(MzML(spectrum)).at(0).rtSeconds, 2.5);
}

TEST(MzMLFile, WarnsOfATimeWithoutUnit) {
  const TempFile file("run.mzML",
                      MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), "", "value=\"2\"")));
  const auto source = OpenScans(file.Path());
  Scan scan;
  ASSERT_TRUE(source->Next(scan));
  EXPECT_TRUE(std::isnan(scan.rtSeconds));
  EXPECT_THAT(source->Warnings(), ElementsAre(HasSubstr("start time without a unit")));
}

TEST(MzMLFile, ReadsTermsFromReferencedGroups) {
  const std::string groups = "<referenceableParamGroupList count=\"2\"><referenceableParamGroup id=\"m\">" +
                             Term(kFloat64) + Term(kZlib) + Term(kMz) +
                             "</referenceableParamGroup><referenceableParamGroup id=\"s\">" +
                             Term(kCentroid) + "</referenceableParamGroup></referenceableParamGroupList>\n";
  const std::string arrays =
      ArrayOfText("<referenceableParamGroupRef ref=\"m\"/>", Base64(Deflate(BytesOf<double>(kAxis)))) +
      IntensityArray();
  const auto text =
      MzML(SpectrumOf("scan=1", 4, arrays, "<referenceableParamGroupRef ref=\"s\"/>"), 1, groups);
  const Scan scan = ReadText(text).at(0);
  EXPECT_EQ(scan.mz, kAxis);
  EXPECT_EQ(scan.representation, Scan::Centroid);
}

TEST(MzMLFile, RefusesAReferenceToNoGroup) {
  EXPECT_THAT(ErrorOf(MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(),
                                      "<referenceableParamGroupRef ref=\"no\"/>"))),
              HasSubstr("refers to a group of parameters that the file has not: \"no\""));
}

TEST(MzMLFile, PassesOverTermsYoungerThanTheDecoder) {
  EXPECT_EQ(
      ReadText(MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), Term("MS:1999999", "value=\"3\""))))
          .size(),
      1u);
}

TEST(MzMLFile, RefusesAnUnknownTermInTheMzArray) {
  EXPECT_THAT(ErrorOfArrays(ArrayOf(kMz, BytesOf<double>(kAxis), kFloat64, "MS:1999999") + IntensityArray()),
              HasSubstr("the m/z array has a term that is not known here: \"MS:1999999\""));
}

TEST(MzMLFile, LeavesOutArraysOfOtherQuantities) {
  const std::string charges = ArrayOf("MS:1000516", BytesOf<std::int32_t>({1, 1, 2, 1}), "MS:1000519");
  EXPECT_EQ(ReadArrays(charges + MzArray(), IntensityArray()).mz, kAxis);
}

TEST(MzMLFile, TakesNoNoticeOfTheDataProcessingOfAnArray) {
  std::string array = MzArray();
  array.replace(0, 16, "<binaryDataArray dataProcessingRef=\"gone\"");
  EXPECT_EQ(ReadArrays(array, IntensityArray()).mz, kAxis);
}

TEST(MzMLFile, ReadsTagsThatAreBrokenIntoLines) {
  std::string array = MzArray();
  for (const std::string name : {" encodedLength=", " accession="}) {
    for (std::size_t at = array.find(name); at != std::string::npos; at = array.find(name, at)) {
      array.replace(at, name.size(), "\n" + name.substr(1, name.size() - 2) + " =\t");
    }
  }
  EXPECT_EQ(ReadArrays(array, IntensityArray()).mz, kAxis);
}

TEST(MzMLFile, ReadsBase64ThatIsBrokenIntoLines) {
  std::string array = MzArray();
  array.insert(array.find("<binary>") + 8, "\n    ").insert(array.find("</binary>"), "\r\n");
  EXPECT_EQ(ReadArrays(array, IntensityArray()).mz, kAxis);
}

TEST(MzMLFile, ReadsAnEmptyScanWhoseArraysAreCompressed) {
  const std::string none = Deflate("");
  const auto text = MzML(SpectrumOf(
      "scan=1", 0, ArrayOf(kMz, none, kFloat64, kZlib) + ArrayOf(kIntensity, none, kFloat64, kZlib)));
  EXPECT_THAT(ReadText(text).at(0).mz, IsEmpty());
}

TEST(MzMLFile, ReadsAFileWithoutSpectra) {
  const TempFile file("run.mzML", "<mzML version=\"1.1.0\"><run id=\"r\"></run></mzML>");
  const auto source = OpenScans(file.Path());
  Scan scan;
  EXPECT_EQ(source->Count(), 0u);
  EXPECT_FALSE(source->Next(scan));
  EXPECT_FALSE(source->Next(scan));
}

TEST(MzMLFile, TakesNoNoticeOfTheByteIndex) {
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  text.insert(text.find("<mzML"), "<indexedmzML>");
  text +=
      "<indexList count=\"1\"><index name=\"spectrum\"><offset "
      "idRef=\"scan=1\">99999999</offset></index></indexList>"
      "<indexListOffset>18446744073709551616</indexListOffset></indexedmzML>";
  EXPECT_EQ(ReadText(text).at(0).amplitude, kCounts);
}

TEST(MzMLFile, ReadsGzipWhateverItsName) {
  const std::string packed = Gzip(MzML(PlainSpectrum("scan=1", kAxis, kCounts)));
  for (const char* name : {"run.mzML.gz", "run.MZML", "run.dat"}) {
    const TempFile file(name, packed);
    EXPECT_EQ(ReadAll(file.Path()).at(0).amplitude, kCounts) << name;
  }
}

TEST(MzMLFile, PutsAnExchangedPairInOrderAndWarns) {
  const TempFile file("run.mzML", MzML(PlainSpectrum("scan=1", {100, 102, 101, 103}, {1, 2, 3, 4})));
  const auto source = OpenScans(file.Path());
  Scan scan;
  ASSERT_TRUE(source->Next(scan));
  EXPECT_THAT(scan.amplitude, ElementsAre(1, 3, 2, 4));
  EXPECT_THAT(source->Warnings(), ElementsAre(HasSubstr("neighbouring points in the wrong order")));
}

TEST(MzMLFile, SortsAPeakListWithoutAWarning) {
  const std::string arrays = ArrayOf(kMz, BytesOf<double>({300, 100, 200, 100})) + IntensityArray();
  const TempFile file("run.mzML", MzML(SpectrumOf("scan=1", 4, arrays, Term(kCentroid))));
  const auto source = OpenScans(file.Path());
  Scan scan;
  ASSERT_TRUE(source->Next(scan));
  EXPECT_THAT(scan.mz, ElementsAre(100, 100, 200, 300));
  EXPECT_THAT(scan.amplitude, ElementsAre(50, 0, 7, 1));
  EXPECT_THAT(source->Warnings(), IsEmpty());
}

TEST(MzMLFile, WarnsOfAWrongCount) {
  const TempFile file("run.mzML", MzML(PlainSpectrum("scan=1", kAxis, kCounts), 5));
  const auto source = OpenScans(file.Path());
  for (Scan scan; source->Next(scan);) {
  }
  EXPECT_EQ(source->Count(), 5u);
  EXPECT_THAT(source->Warnings(), ElementsAre("the file announces 5 spectra and holds 1"));
}

TEST(MzMLFile, LeavesOutLightSpectraWithAWarning) {
  const std::string light =
      SpectrumOf("scan=1", 4, ArrayOf("MS:1000617", BytesOf<double>(kAxis)) + IntensityArray());
  const TempFile file("run.mzML", MzML(light + PlainSpectrum("scan=2", kAxis, kCounts), 2));
  const auto source = OpenScans(file.Path());
  Scan scan;
  ASSERT_TRUE(source->Next(scan));
  EXPECT_EQ(scan.number, 2u);
  EXPECT_THAT(source->Warnings(), ElementsAre(HasSubstr("1 spectrum of wavelengths, left out")));
}

TEST(MzMLFile, SortsWhatIsOutOfOrderAndTellsIt) {
  const TempFile file("run.mzML", MzML(PlainSpectrum("scan=1", {3, 4, 1, 2}, {30, 40, 10, 20})));
  const auto source = OpenScans(file.Path());
  Scan scan;
  ASSERT_TRUE(source->Next(scan));
  EXPECT_THAT(scan.mz, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(scan.amplitude, ElementsAre(10, 20, 30, 40));
  EXPECT_THAT(source->Warnings(),
              ElementsAre(HasSubstr("1 spectrum with m/z out of order, sorted (first at ")));
}

TEST(MzMLFile, TellsThePolarity) {
  const TempFile file(
      "run.mzML",
      MzML(SpectrumOf("scan=1", 4, MzArray() + IntensityArray(), Term(kProfile) + Term("MS:1000130")) +
               SpectrumOf("scan=2", 4, MzArray() + IntensityArray(), Term(kProfile) + Term("MS:1000129")) +
               PlainSpectrum("scan=3", kAxis, kCounts),
           3));
  const auto scans = ReadAll(file.Path());
  ASSERT_EQ(scans.size(), 3U);
  EXPECT_EQ(scans[0].polarity, 1);
  EXPECT_EQ(scans[1].polarity, -1);
  EXPECT_EQ(scans[2].polarity, 0);
}

std::string ThreeScans() {
  std::string spectra;
  for (const int n : {1, 2, 3}) {
    spectra += SpectrumOf("scan=" + std::to_string(n), 4, MzArray() + IntensityArray(), Term(kProfile),
                          "value=\"" + std::to_string(n) + "\" unitAccession=\"UO:0000010\"");
  }
  return MzML(spectra, 3);
}

TEST(MzMLFile, FiltersByNumber) {
  const TempFile file("run.mzML", ThreeScans());
  const auto scans = ReadAll(file.Path(), {.firstNumber = 2, .lastNumber = 2});
  ASSERT_EQ(scans.size(), 1u);
  EXPECT_EQ(scans[0].number, 2u);
  EXPECT_EQ(scans[0].mz, kAxis);
}

TEST(MzMLFile, FiltersByTimeWithBothEnds) {
  const TempFile file("run.mzML", ThreeScans());
  EXPECT_EQ(ReadAll(file.Path(), {.rtFrom = 2, .rtTo = 3}).size(), 2u);
}

TEST(MzMLFile, DoesNotDecodeWhatTheFilterLeavesOut) {
  const std::string bad = SpectrumOf("scan=1", 4, ArrayOf(kMz, "no array") + IntensityArray());
  const TempFile file("run.mzML", MzML(bad + PlainSpectrum("scan=2", kAxis, kCounts), 2));
  EXPECT_EQ(ReadAll(file.Path(), {.firstNumber = 2}).size(), 1u);
  EXPECT_THROW(ReadAll(file.Path()), InputError);
}

}  // namespace
}  // namespace tests
