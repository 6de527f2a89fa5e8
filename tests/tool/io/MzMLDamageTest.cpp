// Tests: MzMLFile.cpp, MzMLArray.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/io/MzMLReading.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::InputError;
using TslTool::OpenScans;
using TslTool::Scan;

TEST(MzMLDamage, NamesFileLineAndSpectrumInAnError) {
  const TempFile file("run.mzML", MzML(SpectrumOf("scan=9", 4, MzArray())));
  try {
    ReadAll(file.Path());
    FAIL() << "no error";
  } catch (const InputError& error) {
    EXPECT_EQ(error.what(), file.Path() + ": line 5, spectrum \"scan=9\": no intensity array");
  }
}

TEST(MzMLDamage, GivesNothingMoreAfterAnError) {
  const TempFile file("run.mzML",
                      MzML(SpectrumOf("scan=1", 4, MzArray()) + PlainSpectrum("scan=2", kAxis, kCounts), 2));
  const auto source = OpenScans(file.Path());
  Scan scan;
  EXPECT_THROW(source->Next(scan), InputError);
  EXPECT_FALSE(source->Next(scan));
}

std::string ManyEncodings() {
  return MzML(PlainSpectrum("scan=1", kAxis, kCounts) +
                  SpectrumOf("scan=2", 4,
                             ArrayOf(kMz, NumpressLinear(kAxis, 1e5), kFloat64, kLinear) +
                                 ArrayOf(kIntensity, NumpressSlof(kCounts, 1e4), kFloat64, kSlof)) +
                  SpectrumOf("scan=3", 4,
                             ArrayOf(kMz, Deflate(BytesOf<float>(kAxis)), kFloat32, kZlib) +
                                 ArrayOf(kIntensity, NumpressPic(kCounts), kFloat64, kPic)),
              3);
}

const std::string kInScan1 = "line 5, spectrum \"scan=1\": ";

struct BadArrays {
  std::string arrays, reason;
};

TEST(MzMLDamage, RefusesDamagedArrays) {
  const std::string good64 = Base64(BytesOf<double>(kAxis));
  const std::string terms = Term(kFloat64) + Term(kPlain) + Term(kMz);
  std::string foreign = good64;
  foreign[5] = '!';
  std::string cutZlib = Deflate(BytesOf<double>(kAxis));
  cutZlib.resize(cutZlib.size() - 5);
  std::string badSum = Deflate(BytesOf<double>(kAxis));
  badSum.back() ^= 0x55;
  const std::vector<BadArrays> table = {
      {MzArray(), "no intensity array"},
      {"", "no m/z and no intensity array"},
      {ArrayOfText(terms, foreign) + IntensityArray(),
       "the base64 text of the m/z array is damaged (character code 33)"},
      {ArrayOfText(terms, good64.substr(0, 30)) + IntensityArray(),
       "the base64 text of the m/z array has a wrong length (30 characters)"},
      {ArrayOfText(terms, "AA==" + good64) + IntensityArray(),
       "the base64 text of the m/z array continues after its padding"},
      {ArrayOf(kMz, BytesOf<double>({1, 2, 3})) + IntensityArray(),
       "the m/z array has 3 of the 4 announced points"},
      {ArrayOf(kMz, BytesOf<double>({1, 2, 3, 4, 5})) + IntensityArray(),
       "the m/z array has more than the 4 announced points"},
      {ArrayOf(kMz, Deflate(BytesOf<double>(Values(100000, 1))), kFloat64, kZlib) + IntensityArray(),
       "the m/z array has more than the 4 announced points"},
      {ArrayOf(kMz, "abcdefg") + IntensityArray(),
       "the m/z array has 7 bytes, no whole number of 64 bit values"},
      {MzArray() + ArrayOf(kIntensity, "abcdefg", "MS:1000519"),
       "the intensity array has 7 bytes, no whole number of 32 bit values"},
      {ArrayOf(kMz, cutZlib, kFloat64, kZlib) + IntensityArray(),
       "the zlib data of the m/z array are damaged"},
      {ArrayOf(kMz, badSum, kFloat64, kZlib) + IntensityArray(),
       "the zlib data of the m/z array are damaged"},
      {ArrayOf(kMz, "", kFloat64, kZlib) + IntensityArray(), "the zlib data of the m/z array are damaged"},
      {ArrayOf(kMz, Deflate(BytesOf<double>(kAxis)) + "more", kFloat64, kZlib) + IntensityArray(),
       "the zlib data of the m/z array are damaged"},
      {ArrayOf(kMz, "abc", kFloat64, kLinear) + IntensityArray(),
       "the Numpress data of the m/z array are damaged"},
      {MzArray() + ArrayOf(kIntensity, "abc", kFloat64, kSlof),
       "the Numpress data of the intensity array are damaged"},
      {MzArray() + ArrayOf(kIntensity, "\x11", kFloat64, kPic),
       "the intensity array has 1 of the 4 announced points"},
      {ArrayOf(kMz, Deflate("abc"), kFloat64, "MS:1002746") + IntensityArray(),
       "the Numpress data of the m/z array are damaged"},
      {ArrayOfText(Term(kPlain) + Term(kMz), good64) + IntensityArray(),
       "the m/z array does not tell 32 or 64 bit floats or integers"},
      {ArrayOf(kMz, BytesOf<double>(kAxis), kFloat64, kFloat32) + IntensityArray(),
       "the m/z array is marked with two kinds of numbers"},
      {ArrayOf(kMz, "", kLinear, kPic) + IntensityArray(),
       "the m/z array is marked with two kinds of Numpress"},
      {MzArray() + IntensityArray() + MzArray(), "more than one m/z array"},
      {ArrayOf(kMz, BytesOf<double>({1, 2, NAN, 4})) + IntensityArray(),
       "point 3 of the m/z array is not a finite number"},
      {MzArray() + ArrayOf(kIntensity, BytesOf<double>({INFINITY, 2, 3, 4})),
       "point 1 of the intensity array is not a finite number"},
  };
  for (const auto& [arrays, reason] : table) EXPECT_EQ(ErrorOfArrays(arrays).substr(kInScan1.size()), reason);
}

TEST(MzMLDamage, RefusesArraysOfDifferentLength) {
  std::string shorter = ArrayOf(kMz, BytesOf<double>({1, 2}));
  shorter.insert(shorter.find(" encodedLength"), " arrayLength=\"2\"");
  EXPECT_THAT(ErrorOfArrays(shorter + IntensityArray()),
              HasSubstr("the m/z array has 2 points and the intensity array 4"));
}

TEST(MzMLDamage, RefusesNumpressOfAnotherLengthThanAnnounced) {
  std::string array = ArrayOf(kMz, NumpressLinear(kAxis, 1e5), kFloat64, kLinear);
  const std::size_t at = array.find("encodedLength=\"") + 15;
  array.replace(at, array.find('"', at) - at, "40");
  EXPECT_THAT(ErrorOfArrays(array + IntensityArray()),
              HasSubstr("characters, but its encodedLength is \"40\""));
}

TEST(MzMLDamage, RefusesNumpressOfALengthThatIsNotAnnounced) {
  std::string array = ArrayOf(kMz, NumpressLinear(kAxis, 1e5), kFloat64, kLinear);
  const std::size_t at = array.find("encodedLength=");
  array.erase(at, array.find('"', at + 15) + 1 - at);
  EXPECT_THAT(ErrorOfArrays(array + IntensityArray()),
              HasSubstr("characters, but its encodedLength is \"\""));
}

TEST(MzMLDamage, RefusesALengthOfAnArrayThatIsNoNumber) {
  std::string array = MzArray();
  array.insert(array.find(" encodedLength"), " arrayLength=\"four\"");
  EXPECT_EQ(ErrorOfArrays(array + IntensityArray()),
            kInScan1 + "the arrayLength of the m/z array is \"four\"");
}

TEST(MzMLDamage, RefusesAnArrayWithoutBinary) {
  const std::string array = "<binaryDataArray encodedLength=\"0\">" + Term(kFloat64) + Term(kPlain) +
                            Term(kMz) + "</binaryDataArray>";
  EXPECT_THAT(ErrorOfArrays(array + IntensityArray()), HasSubstr("the m/z array has no binary element"));
}

TEST(MzMLDamage, RefusesAnEmptyArrayInAScanWithPoints) {
  const std::string array = "<binaryDataArray encodedLength=\"0\">" + Term(kFloat64) + Term(kPlain) +
                            Term(kMz) + "<binary/></binaryDataArray>";
  EXPECT_EQ(ErrorOfArrays(array + IntensityArray()),
            kInScan1 + "the m/z array has 0 of the 4 announced points");
}

TEST(MzMLDamage, RefusesDataInAScanThatAnnouncesNone) {
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  text.replace(text.find("defaultArrayLength=\"4\""), 22, "defaultArrayLength=\"0\"");
  EXPECT_THAT(ErrorOf(text), HasSubstr("announces 0 points, but its arrays are not empty"));
}

TEST(MzMLDamage, RefusesASpectrumWithoutALength) {
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  text.replace(text.find("defaultArrayLength=\"4\""), 22, "");
  EXPECT_THAT(ErrorOf(text), HasSubstr("no defaultArrayLength"));
}

TEST(MzMLDamage, RefusesAMonstrousLength) {
  std::string text = MzML(PlainSpectrum("scan=1", kAxis, kCounts));
  text.replace(text.find("defaultArrayLength=\"4\""), 22, "defaultArrayLength=\"999999999999999999\"");
  EXPECT_THAT(ErrorOf(text), HasSubstr("the m/z array has 4 of the 999999999999999999 announced points"));
}

TEST(MzMLDamage, RefusesValuesOfTermsThatAreNone) {
  const std::string arrays = MzArray() + IntensityArray();
  EXPECT_EQ(ErrorOf(MzML(SpectrumOf("scan=1", 4, arrays, Term("MS:1000511", "value=\"two\"")))),
            kInScan1 + "the MS level is \"two\"");
  EXPECT_EQ(ErrorOf(MzML(SpectrumOf("scan=1", 4, arrays, "", "value=\"\""))),
            kInScan1 + "the scan start time is \"\"");
}

// The library that unpacks Numpress has names that tell a user nothing.
TEST(MzMLDamage, MessagesAreThisProgramsOwn) {
  const std::string text = ManyEncodings();
  std::mt19937 random(11);
  for (int round = 0; round < 400; ++round) {
    std::string garbled = text;
    garbled[random() % text.size()] = static_cast<char>(random() % 256);
    const std::string error = ErrorOf(garbled);
    for (const char* foreign : {"::", "pwiz", "IO", "SAX", "boost", "std", "lexical", "inflate", "what()"})
      EXPECT_THAT(error, testing::Not(HasSubstr(foreign)));
  }
}

struct BadText {
  std::string text, error;
};

TEST(MzMLDamage, RefusesWhatIsNotWellFormedMzML) {
  const std::vector<BadText> table = {
      {"just words", "line 1: not XML: the file begins with \"just words\""},
      {"<svg></svg>", "line 1: the root element is <svg>, not <mzML>"},
      {"<mzML><run>\n</mzML>", "line 2: </mzML> closes <run>"},
      {"<mzML>\n<run id=\"<x>\"></run></mzML>", "line 2: '<' inside an attribute value"},
      {"<mzML></mzML>\n<indexList/>", "line 2: <indexList> follows the end of the root element"},
      {"<mzML></mzML>\n</mzML>", "line 2: </mzML> closes nothing"},
      {"<mzML></mzML> tail", "line 1: text after the root element: \"tail\""},
      {"<mzML><run id=r></run></mzML>", "line 1: no attribute of the form name=\"value\": \"id=r\""},
      {"<mzML><run", "line 1: the file ends inside the tag \"<run\""},
      {"<mzML>\n\n", "line 3: the file ends inside <mzML>"},
      {"<?xml version=\"1.0\"?>\n", "line 2: no XML element"},
      {"<!DOCTYPE a SYSTEM \"http://x/\"><mzML/>",
       "line 1: a declaration that is not read here: \"<!DOCTYPE\""},
      {std::string("\xff\xfe<\0m\0", 6),
       "line 1: the text is UTF-16; only UTF-8 and 8-bit encodings are read"},
  };
  for (const auto& [text, error] : table) EXPECT_EQ(ErrorOf(text), error);
}

TEST(MzMLDamage, RefusesEveryTruncation) {
  const std::string text =
      MzML(PlainSpectrum("scan=1", kAxis, kCounts) + PlainSpectrum("scan=2", kAxis, kCounts), 2);
  for (std::size_t size = 0; size + 2 < text.size(); size += 64) {
    EXPECT_NE(ErrorOf(text.substr(0, size)), "") << size;
  }
}

TEST(MzMLDamage, RefusesEveryTruncationOfGzip) {
  const std::string packed = Gzip(MzML(PlainSpectrum("scan=1", kAxis, kCounts)));
  for (std::size_t size = 0; size < packed.size(); size += 16)
    EXPECT_NE(ErrorOf(packed.substr(0, size)), "") << size;
}

TEST(MzMLDamage, RefusesGzipWithAWrongChecksumBeforeAnyScan) {
  std::string packed = Gzip(MzML(PlainSpectrum("scan=1", kAxis, kCounts)));
  packed[packed.size() - 8] ^= 1;
  const TempFile file("run.mzML.gz", packed);
  EXPECT_THROW(OpenScans(file.Path()), InputError);
}

TEST(MzMLDamage, MeetsGarbledBytesWithDataOrAnErrorAndInSilence) {
  const std::string text = ManyEncodings();
  ASSERT_EQ(ReadText(text).size(), 3u);
  std::mt19937 random(20240601);
  int read = 0, refused = 0;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  for (int round = 0; round < 600; ++round) {
    std::string garbled = text;
    for (int k = 0; k < 1 + round % 4; ++k)
      garbled[random() % text.size()] = static_cast<char>(random() % 256);
    ++(ErrorOf(garbled).empty() ? read : refused);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
  EXPECT_GT(read, 10);
  EXPECT_GT(refused, 100);
}

TEST(MzMLDamage, MeetsGarbledArrayTextWithDataOrAnError) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::string text = ManyEncodings();
  std::mt19937 random(7);
  int refused = 0;
  for (int round = 0; round < 300; ++round) {
    std::string garbled = text;
    for (std::size_t at = garbled.find("<binary>"); at != std::string::npos;
         at = garbled.find("<binary>", at + 1)) {
      const std::size_t size = garbled.find('<', at + 8) - at - 8;
      garbled[at + 8 + random() % size] = kLetters[random() % kLetters.size()];
    }
    refused += !ErrorOf(garbled).empty();
  }
  EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace tests
