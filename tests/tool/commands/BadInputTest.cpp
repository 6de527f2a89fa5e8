// Every kind of foreign file, missing, empty, cut and garbled: exit status 1, a message that
// names the file and the place, nothing written.
//
// Tests: tool/io/OpenScans.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/chain/ChainFile.h>
#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>
#include <tslbl/curve/SmoothParams.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// The message for a spectrum file, without the tool's and the file's name.
std::string ErrorOf(const std::string& name, const std::string& content) {
  const TempFile file(name, content);
  const Outcome outcome = RunTool(
      {"peaks", file.Path(), "-o", file.Folder() + "/peaks.tsv", "--curve", file.Folder() + "/curve.tsv"});
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(NamesIn(file.Folder()), ElementsAre(name));
  const std::string start = "tslbl: " + file.Path() + ": ";
  EXPECT_THAT(outcome.err, StartsWith(start));
  return outcome.err.substr(std::min(start.size(), outcome.err.size()));
}

std::string GoodMzML() {
  return MzML(PlainSpectrum("scan=1", {100, 101, 102}, {1, 5, 2}) +
                  PlainSpectrum("scan=2", {100, 101, 102}, {1, 5, 2}),
              2);
}

TEST(BadInput, AnEmptyFileIsSaidToBeEmpty) {
  for (const char* name : {"a.mzML", "a.mzML.gz", "a.txt", "a.run"})
    EXPECT_EQ(ErrorOf(name, ""), "the file is empty\n");
}

TEST(BadInput, AMissingFileAndAFolderAreNamed) {
  for (const char* path : {"/no/such/a.mzML", "/tmp"}) {
    const Outcome outcome = RunTool({"peaks", path});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("tslbl: " + std::string(path) + ": "));
  }
}

TEST(BadInput, CutMzMLNamesTheLine) {
  const std::string good = GoodMzML();
  EXPECT_THAT(ErrorOf("a.mzML", good.substr(0, good.size() / 2)), HasSubstr("line "));
  EXPECT_THAT(ErrorOf("a.mzML", good.substr(0, good.size() - 5)), HasSubstr("line "));
}

TEST(BadInput, GarbledMzMLNamesThePlace) {
  std::string good = GoodMzML();
  good[good.rfind("<binary>") + 10] = '!';
  EXPECT_THAT(ErrorOf("a.mzML", good), HasSubstr("scan=2"));
}

TEST(BadInput, CutAndGarbledGzipIsSaidToBeDamaged) {
  const std::string packed = Gzip(GoodMzML());
  EXPECT_THAT(ErrorOf("a.mzML.gz", packed.substr(0, packed.size() / 2)), HasSubstr("gzip"));
  std::string garbled = packed;
  garbled[packed.size() / 2] = static_cast<char>(~garbled[packed.size() / 2]);
  EXPECT_THAT(ErrorOf("a.mzML.gz", garbled), HasSubstr("gzip"));
}

TEST(BadInput, TextThatIsNoSpectrumNamesTheLine) {
  EXPECT_THAT(ErrorOf("a.txt", "100 1\n101 x\n"), StartsWith("line 2: "));
  EXPECT_THAT(ErrorOf("a.txt", "100 1\n101\n"), StartsWith("line 2: "));
  EXPECT_THAT(ErrorOf("a.txt", std::string("100 1\n\0\xff\x01", 9)), StartsWith("line 2: "));
}

TEST(BadInput, ACutRunNamesThePlace) {
  const std::string good = ReadFile(DemoRun::Get().Run());
  EXPECT_NE(ErrorOf("a.run", good.substr(0, good.size() / 2)), "");
  EXPECT_NE(ErrorOf("a.run", good.substr(0, 1000)), "");
  EXPECT_NE(ErrorOf("a.run", good.substr(0, 20)), "");
}

TEST(BadInput, AGarbledRunNamesTheScan) {
  std::string bytes = ReadFile(DemoRun::Get().Run());
  for (std::size_t i = bytes.size() / 2; i < bytes.size() / 2 + 5000; ++i) bytes[i] = 'z';
  EXPECT_THAT(ErrorOf("a.run", bytes), HasSubstr("scan "));
}

TEST(BadInput, AnotherDatabaseIsNoRun) {
  const TempFile folder("x", "");
  const Outcome made = RunTool({"simulate", "-o", folder.Folder() + "/a.run", "--scans", "1"});
  ASSERT_EQ(made.status, 0);
  std::string bytes = ReadFile(folder.Folder() + "/a.run");
  bytes[68] = 'X';  // of the application's id
  EXPECT_EQ(ErrorOf("b.run", bytes), "is an SQLite file, but not a run of raw counts\n");
}

// The message for a chain file, likewise.
std::string ErrorOfChain(const std::string& content) {
  const TempFile chain("chain.xml", content);
  const Outcome outcome = RunTool({"peaks", "--chain", chain.Path(), "-o", chain.Folder() + "/peaks.tsv"});
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(NamesIn(chain.Folder()), ElementsAre("chain.xml"));
  const std::string start = "tslbl: " + chain.Path() + ": ";
  EXPECT_THAT(outcome.err, StartsWith(start));
  return outcome.err.substr(std::min(start.size(), outcome.err.size()));
}

TEST(BadInput, AChainFileThatIsNoneNamesThePlace) {
  const std::string good = TslTool::ChainToXml({TslBL::CurveEval(TslBL::SmoothParams())});
  EXPECT_THAT(ErrorOfChain(""), StartsWith("line 1, column 1: "));
  EXPECT_THAT(ErrorOfChain(good.substr(0, good.size() / 2)), StartsWith("line "));
  EXPECT_THAT(ErrorOfChain("\x01\x02 garbage"), StartsWith("line 1, column 1: "));
  std::string misspelt = good;
  misspelt.replace(misspelt.find("Mean"), 4, "Meen");
  EXPECT_EQ(ErrorOfChain(misspelt), "CurveEvals/CurveEval/Smooth/Alg: \"Meen\" is not a value for it\n");
}

TEST(BadInput, WhatHoldsNothingToEvaluateTellsWhy) {
  const std::string arrays = ArrayOf(kMz, BytesOf<double>({100})) + ArrayOf(kIntensity, BytesOf<double>({1}));
  EXPECT_EQ(
      ErrorOf("a.mzML", MzML(SpectrumOf("scan=4", 1, arrays, Term(kCentroid)))),
      "holds no spectrum to evaluate: 1 of 1 spectra skipped: 1 of less than two points (first at scan 4)\n");
  EXPECT_EQ(
      ErrorOf("a.mzML", MzML("<spectrum index=\"0\" id=\"scan=5\" defaultArrayLength=\"0\"></spectrum>")),
      "holds no spectrum to evaluate: 1 of 1 spectra skipped: 1 of less than two points (first at scan 5)\n");
}

TEST(BadInput, InfoTellsTheSame) {
  const TempFile file("a.txt", "100 1\n101 x\n");
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, RunTool({"peaks", file.Path()}).err);
}

}  // namespace
}  // namespace tests
