// The command peaks with --format mzml, as its users and the programs of others see it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <pwiz/data/msdata/MSDataFile.hpp>
#include <string>
#include <vector>

#include <tool/commands/DemoRun.h>
#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/MzMLWriter.h>
#include <tool/frame/InputError.h>
#include <tool/io/IndexedReading.h>
#include <tool/io/MzMLReading.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using TslTool::Scan;

// A profile of three peaks that the chain finds.
std::string Profile(const std::string& id,
                    const std::string& terms = Term("MS:1000511", "value=\"1\"") + Term(kProfile)) {
  Values mz, counts;
  for (int i = 0; i < 600; ++i) {
    mz.push_back(100 + 0.05 * i);
    counts.push_back(10 + i % 3);
    for (const int at : {100, 300, 450})
      counts.back() += std::floor(900 * std::exp(-std::pow((i - at) / 5.0, 2)));
  }
  return SpectrumOf(id, mz.size(),
                    ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(counts)), terms);
}

std::string Centroids(const std::string& id) {
  return SpectrumOf(id, 4, MzArray() + IntensityArray(), Term("MS:1000511", "value=\"1\"") + Term(kCentroid));
}

// A file in a folder, and what the command makes of it there.
class Converted {
 public:
  explicit Converted(const std::string& input, const std::string& name = "in.mzML") : file_(name, input) {
    outcome_ = RunTool({"peaks", file_.Path(), "--quiet", "--format", "mzml", "--output", Path()});
  }
  std::string Path() const { return file_.Folder() + "/out.mzML"; }
  std::string Folder() const { return file_.Folder(); }
  std::string Text() const { return ReadFile(Path()); }
  const Outcome& Ended() const { return outcome_; }

 private:
  TempFile file_;
  Outcome outcome_;
};

void ExpectWhole(const std::string& text, std::size_t spectra) {
  EXPECT_THAT(text, HasSubstr("<spectrumList count=\"" + std::to_string(spectra) + "\" "));
  const std::vector<IndexEntry> index = IndexOf(text);
  ASSERT_EQ(index.size(), spectra);
  for (std::size_t i = 0; i < spectra; ++i)
    EXPECT_THAT(text.substr(index[i].offset, 300),
                StartsWith("<spectrum index=\"" + std::to_string(i) + "\" id=\"" + index[i].id + "\" "));
  EXPECT_THAT(text.substr(IndexListOffset(text)), StartsWith("<indexList "));
  EXPECT_EQ(ChecksumOf(text), SumUpToChecksum(text));
}

TEST(MzMLWriter, ADemonstrationIsWholeAndHoldsTheTablesPeaksBitForBit) {
  const DemoRun& demo = DemoRun::Get();
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/demo.mzML";
  const Outcome outcome = RunTool({"peaks", demo.Run(), "-q", "--format", "mzml", "-o", file});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out + outcome.err, "");
  ExpectWhole(ReadFile(file), 20);
  const std::vector<Row> rows = demo.Peaks();
  std::size_t at = 0;
  for (const Scan& scan : ReadAll(file)) {
    EXPECT_EQ(scan.representation, Scan::Centroid);
    EXPECT_EQ(scan.msLevel, 1);
    EXPECT_EQ(scan.polarity, 1);
    for (std::size_t i = 0; i < scan.mz.size(); ++i, ++at) {
      EXPECT_EQ(rows.at(at).at("scan"), std::to_string(scan.number));
      EXPECT_EQ(std::stod(rows[at].at("rt_s")), scan.rtSeconds);
      EXPECT_EQ(std::stod(rows[at].at("mz")), scan.mz[i]);
      EXPECT_EQ(std::stod(rows[at].at("amplitude")), scan.amplitude[i]);
    }
  }
  EXPECT_EQ(at, rows.size());
}

TEST(MzMLWriter, ProteoWizardReadsWhatWasWritten) {
  const Converted converted(MzML(Profile("scan=4") + Profile("scan=9"), 2));
  ASSERT_EQ(converted.Ended().status, 0) << converted.Ended().err;
  const std::vector<Scan> scans = ReadAll(converted.Path());
  const pwiz::msdata::MSDataFile data(converted.Path());
  ASSERT_EQ(data.run.spectrumListPtr->size(), 2U);
  EXPECT_EQ(data.run.id, "in");
  EXPECT_EQ(data.run.spectrumListPtr->find("scan=9"), 1U);
  for (std::size_t i = 0; i < 2; ++i) {
    const auto spectrum = data.run.spectrumListPtr->spectrum(i, true);
    EXPECT_EQ(spectrum->id, scans.at(i).id);
    EXPECT_TRUE(spectrum->hasCVParam(pwiz::cv::MS_centroid_spectrum));
    EXPECT_EQ(std::vector<double>(spectrum->getMZArray()->data), scans[i].mz);
    EXPECT_EQ(std::vector<double>(spectrum->getIntensityArray()->data), scans[i].amplitude);
    EXPECT_EQ(spectrum->binaryDataArrayPtrs.size(), 10U);
  }
}

TEST(MzMLWriter, EveryTermHasTheNameThatItsVocabularyGivesIt) {
  const Converted converted(MzML(Profile("scan=4"), 1));
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(converted.Path().c_str()));
  const auto params = document.select_nodes("//cvParam");
  EXPECT_GT(params.size(), 40U);
  for (const pugi::xpath_node& found : params) {
    const pugi::xml_node param = found.node();
    const auto& term = pwiz::cv::cvTermInfo(param.attribute("accession").value());
    EXPECT_EQ(term.name, param.attribute("name").value()) << param.attribute("accession").value();
    const std::string unit = param.attribute("unitAccession").value();
    if (unit.empty()) continue;
    EXPECT_EQ(pwiz::cv::cvTermInfo(unit).name, param.attribute("unitName").value()) << unit;
  }
}

TEST(MzMLWriter, CountsOnlyTheSpectraThatWereEvaluated) {
  const Converted converted(
      MzML(Profile("scan=1") + Centroids("scan=2") + Profile("scan=3") + Centroids("scan=4"), 4));
  ASSERT_EQ(converted.Ended().status, 0);
  EXPECT_THAT(converted.Ended().err, HasSubstr("2 of 4 spectra skipped: 2 marked as centroid"));
  ExpectWhole(converted.Text(), 2);
  const std::vector<IndexEntry> index = IndexOf(converted.Text());
  EXPECT_EQ(index[0].id, "scan=1");
  EXPECT_EQ(index[1].id, "scan=3");
}

TEST(MzMLWriter, KeepsTheIdsOfItsInputAndHowTheyAreBuilt) {
  const std::string head =
      "<fileDescription><sourceFileList count=\"1\"><sourceFile id=\"a\" name=\"b\" location=\"c\"><cvParam "
      "cvRef=\"MS\" accession=\"MS:1000769\" name=\"Waters nativeID format\"/></sourceFile></sourceFileList>"
      "</fileDescription>";
  const Converted converted(
      MzML(Profile("function=1 process=0 scan=1") + Profile("function=2 process=0 scan=1"), 2, head));
  ASSERT_EQ(converted.Ended().status, 0) << converted.Ended().err;
  EXPECT_THAT(converted.Text(), HasSubstr("accession=\"MS:1000769\" name=\"Waters nativeID format\""));
  EXPECT_EQ(IndexOf(converted.Text()).at(1).id, "function=2 process=0 scan=1");
}

TEST(MzMLWriter, SaysHowIdsAreBuiltThatAreAllAlike) {
  const struct {
    std::vector<const char*> ids;
    const char* term;
  } table[] = {{{"scan=1", "scan=2"}, "MS:1000776"},
               {{"index=0", "index=1"}, "MS:1000774"},
               {{"spectrum=1", "spectrum=2"}, "MS:1000777"},
               {{"scan=1", "index=1"}, nullptr},
               {{"scan=a"}, nullptr}};
  for (const auto& row : table) {
    std::string spectra;
    for (const char* id : row.ids) spectra += Profile(id);
    const std::string text = Converted(MzML(spectra, row.ids.size())).Text();
    for (const char* term : {"MS:1000776", "MS:1000774", "MS:1000777"})
      EXPECT_EQ(text.find(term) != std::string::npos, row.term && std::string(term) == row.term)
          << row.ids[0];
  }
}

TEST(MzMLWriter, TheToolTakesWhatItWroteForCentroidData) {
  const Converted converted(MzML(Profile("scan=1"), 1));
  const Outcome info = RunTool({"info", converted.Path()});
  EXPECT_THAT(info.out, HasSubstr("kind          1 centroid\n"));
  const Outcome peaks = RunTool({"peaks", converted.Path()});
  EXPECT_EQ(peaks.status, 1);
  EXPECT_THAT(peaks.err, HasSubstr("1 of 1 spectra skipped: 1 marked as centroid"));
}

TEST(MzMLWriter, ATextBecomesOneSpectrumOfNoLevel) {
  std::string text;
  for (int i = 0; i < 500; ++i)
    text += std::to_string(100 + i * 0.1) + " " + std::to_string(3 + i % 5 + (i / 100 == 2 ? 900 : 0)) + "\n";
  const Converted converted(text, "in.txt");
  ASSERT_EQ(converted.Ended().status, 0) << converted.Ended().err;
  ExpectWhole(converted.Text(), 1);
  EXPECT_EQ(IndexOf(converted.Text()).at(0).id, "scan=1");
  EXPECT_THAT(converted.Text(), testing::Not(HasSubstr("MS:1000511")));
}

TEST(MzMLWriter, CountsPerSecondAreThoseThatNobodyMultiplied) {
  Arguments words = {"peaks", DemoRun::Get().Run(), "--scan", "5", "-q", "--format", "mzml"};
  EXPECT_THAT(RunTool(words).out, HasSubstr("unitAccession=\"MS:1000814\""));
  words.insert(words.end(), {"--scale", "10"});
  const std::string scaled = RunTool(words).out;
  EXPECT_THAT(scaled, HasSubstr("unitAccession=\"MS:1000131\""));
  EXPECT_THAT(scaled, testing::Not(HasSubstr("MS:1000814")));
  EXPECT_THAT(scaled, HasSubstr("<userParam name=\"factor\" value=\"10\" />"));
}

TEST(MzMLWriter, StandardOutputHasTheWholeDocument) {
  const TempFile input("in.mzML", MzML(Profile("scan=1") + Profile("scan=2"), 2));
  const Outcome named = RunTool({"peaks", input.Path(), "-q", "--format", "mzml"});
  ExpectWhole(named.out, 2);
  const Outcome piped = RunShell("\"$TSLBL\" peaks - -q --format mzml < '" + input.Path() + "'");
  ExpectWhole(piped.out, 2);
  EXPECT_THAT(piped.out, testing::Not(HasSubstr("<sourceFile")));
}

TEST(MzMLWriter, IsTheSameOnAnyNumberOfThreads) {
  const auto with = [](const char* threads) {
    return RunTool({"peaks", DemoRun::Get().Run(), "-q", "--format", "mzml", "--threads", threads}).out;
  };
  const std::string one = with("1");
  ExpectWhole(one, 20);
  EXPECT_TRUE(one == with("8"));
}

TEST(MzMLWriter, SeveralInputsHaveAFileEach) {
  const TempFile a("a.mzML", MzML(Profile("scan=1"), 1));
  const TempFile b("b.txt", "100 1\n100.1 500\n100.2 2\n100.3 1\n");
  const std::string folder = a.Folder() + "/D";
  const Outcome outcome =
      RunTool({"peaks", a.Path(), b.Path(), "-q", "--format", "mzml", "--output-dir", folder});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(NamesIn(folder), ElementsAre("a.mzML", "b.mzML"));
  ExpectWhole(ReadFile(folder + "/a.mzML"), 1);
  ExpectWhole(ReadFile(folder + "/b.mzML"), 1);
}

TEST(MzMLWriter, IsNeverWrittenOverWhatIsRead) {
  const TempFile a("a.mzML", MzML(Profile("scan=1"), 1));
  const std::string before = ReadFile(a.Path());
  EXPECT_EQ(RunTool({"peaks", a.Path(), "--format", "mzml", "--output-dir", a.Folder()}).status, 2);
  EXPECT_EQ(RunTool({"peaks", a.Path(), "--format", "mzml", "--output", a.Path()}).status, 2);
  EXPECT_EQ(ReadFile(a.Path()), before);
}

TEST(MzMLWriter, AFailureLeavesNothingAndWhatWasThereAsItWas) {
  const std::string whole = MzML(Profile("scan=1") + Profile("scan=2"), 2);
  const TempFile input("in.mzML", whole.substr(0, whole.size() * 3 / 4));
  const std::string file = input.Folder() + "/out.mzML";
  EXPECT_EQ(RunTool({"peaks", input.Path(), "--format", "mzml", "-o", file}).status, 1);
  EXPECT_THAT(NamesIn(input.Folder()), ElementsAre("in.mzML"));
  std::ofstream(file) << "before";
  EXPECT_EQ(RunTool({"peaks", input.Path(), "--format", "mzml", "-o", file}).status, 1);
  EXPECT_EQ(ReadFile(file), "before");
}

TEST(MzMLWriter, IsNotResumed) {
  const TempFile input("in.mzML", MzML(Profile("scan=1"), 1));
  const Outcome outcome =
      RunTool({"peaks", input.Path(), "--format", "mzml", "-o", input.Folder() + "/o.mzML", "--resume"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("only a table of --format tsv"));
}

TEST(MzMLWriter, AnErrorNamesTheScanWhosePeakCannotBeWritten) {
  TslTool::MzMLWriter writer;
  writer.Describe({"a.mzML", {}, {}});
  const TslTool::LoadedSpectrum loaded = EvaluatedScan(3);
  std::vector<TslTool::ReportedPeak> peaks = TslTool::ReportedPeaks(loaded);
  peaks.at(1).row.Ampl = std::numeric_limits<double>::infinity();
  try {
    writer.Part(loaded, peaks);
    FAIL() << "it was written";
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(error.File(), "a.mzML");
    EXPECT_EQ(error.Place(), "scan 3");
    EXPECT_THAT(error.Reason(), HasSubstr("has the amplitude inf"));
  }
}

}  // namespace
}  // namespace tests
