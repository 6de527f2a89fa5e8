#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include <tool/ToolRun.h>
#include <tool/chain/ChainFile.h>
#include <tool/commands/DemoRun.h>
#include <tool/commands/decon/Proteins.h>
#include <tool/plot/SvgReading.h>
#include <tslbl/curve/PeakDetectParams.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::LoadedSpectrum;

class Decon : public testing::Test {
 protected:
  Outcome Run(const Arguments& more) const { return On(file_.Path(), more); }
  std::string In(const std::string& name) const { return file_.Folder() + "/" + name; }

  static Outcome On(const std::string& input, const Arguments& more) {
    Arguments words = {"decon", input};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

  TempFile file_{"proteins.txt", TextOf(CountedProteins())};
};

TEST_F(Decon, FindsTheProteinsOfATextWithoutASwitch) {
  const Outcome outcome = Run({"--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 2U) << outcome.out;
  EXPECT_NEAR(std::stod(rows[0].at("mass")), kLarge.mass, 0.1);
  EXPECT_NEAR(std::stod(rows[1].at("mass")), kSmall.mass, 0.3);
  EXPECT_THAT(outcome.err, HasSubstr("proteins.txt: 2 series in 1 of 1 spectra"));
}

constexpr double kPeptides[] = {652.35, 903.41, 1196.62, 1347.73};

// Isotopes of peptides of charge 1, in lines as wide as a quadrupole's.
LoadedSpectrum CountedPeptides(double width) {
  LoadedSpectrum loaded = CountedProteins({});
  std::mt19937_64 random(5);
  for (std::size_t i = 0; i < loaded.spectrum->xAxis.size(); ++i) {
    double mean = 5.0;
    for (const double mass : kPeptides) {
      double share = 4000.0;
      for (int k = 0; k < 6; ++k) {
        const double u = (loaded.spectrum->xAxis[i] - mass - kProton - 1.0028 * k) / width;
        mean += share * std::exp(-4.0 * std::log(2.0) * u * u);
        share *= 5.5e-4 * mass / (k + 1);
      }
    }
    loaded.spectrum->yAxis[i] = std::poisson_distribution<int>(mean)(random);
  }
  return loaded;
}

TEST_F(Decon, TakesIsotopesApartThatRunIntoEachOther) {
  for (const double width : {0.6, 0.7, 0.8}) {
    const TempFile file("peptides.txt", TextOf(CountedPeptides(width)));
    const Outcome outcome = On(file.Path(), {"--format", "tsv"});
    EXPECT_THAT(outcome.err, HasSubstr("charges to 1, which overlap and were taken apart in 1 of 1 spectra"));
    for (const Row& row : RowsOf(outcome.out)) {
      const double mass = std::stod(row.at("mass"));
      const double error = std::stod(row.at("mass_se"));
      EXPECT_TRUE(
          std::ranges::any_of(kPeptides, [&](double each) { return std::abs(mass - each) < 4.0 * error; }))
          << mass << " at " << width;
      EXPECT_LT(error, 0.1) << mass;
    }
    EXPECT_GE(RowsOf(outcome.out).size(), 3U) << width;
  }
}

TEST_F(Decon, TakesNothingApartWhereThatIsNotWantedOrSeriesOfChargesAreFound) {
  const TempFile file("peptides.txt", TextOf(CountedPeptides(0.7)));
  EXPECT_THAT(On(file.Path(), {"--no-overlap"}).err, testing::Not(HasSubstr("taken apart")));
  EXPECT_THAT(Run({}).err, testing::Not(HasSubstr("isotopes overlap")));
}

// Lines 0.7 m/z wide, 0.6 to 1.1 apart.
TEST_F(Decon, TakesProteinsApartWhoseLinesRunIntoEachOther) {
  const Protein heavier = {kLarge.mass + 13.0, 12, 22, 5000.0};
  const TempFile file("two.txt", TextOf(CountedProteins({kLarge, heavier})));
  const Outcome outcome = On(file.Path(), {"--format", "tsv", "--unresolved"});
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 2U) << outcome.out;
  EXPECT_NEAR(std::stod(rows[0].at("mass")), kLarge.mass, 0.3);
  EXPECT_NEAR(std::stod(rows[1].at("mass")), heavier.mass, 0.3);
  EXPECT_NEAR(std::stod(rows[1].at("intensity")) / std::stod(rows[0].at("intensity")), 5.0 / 8.0, 0.05);
  EXPECT_THAT(outcome.err, HasSubstr("lines that overlap were taken apart in 1 of 1 spectra"));
  const Outcome whole = On(file.Path(), {"--format", "tsv", "--unresolved", "--no-overlap"});
  EXPECT_THAT(whole.err, testing::Not(HasSubstr("taken apart")));
}

TEST_F(Decon, TakesAListOfPeaksAsItIs) {
  std::string text = "mz,area\n";
  for (int charge = 12; charge <= 20; ++charge)
    text += std::to_string(kLarge.Mz(charge)) + "," + std::to_string(kLarge.Height(charge)) + "\n";
  const TempFile list("list.csv", text);
  const Outcome outcome = On(list.Path(), {"--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 1U) << outcome.out;
  EXPECT_NEAR(std::stod(rows[0].at("mass")), kLarge.mass, 0.01);
  EXPECT_EQ(rows[0].at("peaks"), "9");
  EXPECT_THAT(outcome.err, HasSubstr("1 of 1 spectra are lists of peaks, taken as they are"));
  EXPECT_THAT(outcome.err, testing::Not(HasSubstr("--smooth")));
}

TEST_F(Decon, FindsTheProteinOfTheDemonstrationInEachScan) {
  const Outcome outcome = On(DemoRun::Get().Run(), {"--format", "tsv", "--unresolved"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  EXPECT_EQ(rows.size(), 20U);
  // Of 8559.62 Da monoisotopic, an average protein weighs 5.1 Da more.
  for (const Row& row : rows) EXPECT_NEAR(std::stod(row.at("mass")), 8564.7, 0.4);
}

TEST_F(Decon, ContinuesATableThatWasInterrupted) {
  const std::string whole = In("whole.tsv");
  ASSERT_EQ(On(DemoRun::Get().Run(), {"--format", "tsv", "--quiet", "--output", whole}).status, 0);
  const std::string text = ReadFile(whole);
  const std::string resumed = In("resumed.tsv");
  std::ofstream(resumed + ".part") << text.substr(0, text.size() / 2);
  ASSERT_EQ(On(DemoRun::Get().Run(), {"--format", "tsv", "--quiet", "--resume", "--output", resumed}).status,
            0);
  EXPECT_EQ(ReadFile(resumed), text);
}

class DeconWithEdits : public Decon {
 protected:
  Outcome Table(const std::string& output, const Arguments& more) const {
    Arguments words = {"--format", "tsv", "--unresolved", "--output", output};
    words.insert(words.end(), more.begin(), more.end());
    return On(DemoRun::Get().Run(), words);
  }
  // The table up to a number of lines, and half the next one.
  static std::string Beginning(const std::string& text, std::size_t lines) {
    std::size_t end = 0;
    for (; lines > 0; --lines) end = text.find('\n', end) + 1;
    return text.substr(0, end + 20);
  }
  std::string Whole() const {
    const Outcome outcome = Table(In("whole.tsv"), {"--edits", edits_.Path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return ReadFile(In("whole.tsv"));
  }

  TempFile edits_{"edits.tsv", "2 remove-series UA\n9 remove-series UA\n15 remove-series UA\n"};
};

TEST_F(DeconWithEdits, ContinuesATableThatWasInterrupted) {
  const std::string whole = Whole();
  EXPECT_EQ(LinesOf(whole).size(), 18U);
  // Behind the last scan before an edited one, and in the middle.
  for (const std::size_t lines : {2U, 6U, 8U, 13U}) {
    const std::string resumed = In("resumed" + std::to_string(lines) + ".tsv");
    std::ofstream(resumed + ".part") << Beginning(whole, lines);
    const Outcome outcome = Table(resumed, {"--edits", edits_.Path(), "--resume"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadFile(resumed), whole) << lines;
  }
}

TEST_F(DeconWithEdits, TellsThatRowsOfEditedScansMayStandInTheTableAlready) {
  const std::string resumed = In("resumed.tsv");
  std::ofstream(resumed + ".part") << Beginning(Whole(), 6);
  EXPECT_THAT(
      Table(resumed, {"--edits", edits_.Path(), "--resume"}).err,
      HasSubstr("scan 2 has edits and was not evaluated; rows that the table had of it are as they were"));
}

TEST_F(DeconWithEdits, ContinueNoTableWhoseLastScanIsWithoutThem) {
  ASSERT_EQ(Table(In("plain.tsv"), {}).status, 0);
  const std::string resumed = In("resumed.tsv");
  std::ofstream(resumed + ".part") << Beginning(ReadFile(In("plain.tsv")), 4);
  const Outcome outcome = Table(resumed, {"--edits", edits_.Path(), "--resume"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("scan 2: holds other peaks than this input and chain give"));
}

// The library writes the whole range by a word that it reads as another one.
TEST_F(Decon, TakesAChainThatTheLibraryWrote) {
  TslBL::ChargeStateParams params;
  params.Method = TslBL::ChargeStateParams::UnresolvedOnly;
  params.MZAssign = TslBL::ChargeStateParams::Centroid;
  params.PkIntensity = TslBL::ChargeStateParams::Area;
  const std::string shown = RunTool({"peaks", file_.Path(), "--show-chain"}).out;
  const TempFile peaks("peaks.xml", shown);
  std::vector<TslBL::CurveEval> chain = TslTool::LoadChain(peaks.Path());
  chain.emplace_back(params);
  const TempFile written("chain.xml", TslTool::ChainToXml(chain));
  const Outcome outcome = Run({"--format", "tsv", "--chain", written.Path()});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, Run({"--format", "tsv", "--chain", peaks.Path(), "--unresolved", "--mass",
                              "1000-20000", "--max-species", "10"})
                             .out);
  EXPECT_EQ(RowsOf(outcome.out).size(), 2U);
}

TEST_F(Decon, RefusesSwitchesBesideAChainWithChargeStates) {
  const TempFile written("chain.xml", TslTool::ChainToXml({TslBL::CurveEval(TslBL::ChargeStateParams())}));
  const Outcome outcome = Run({"--chain", written.Path(), "--unresolved"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--unresolved and a --chain with charge states exclude each other"));
}

TEST_F(Decon, RefusesAChainThatGoesOnBehindChargeStates) {
  const TempFile written("chain.xml", TslTool::ChainToXml({TslBL::CurveEval(TslBL::ChargeStateParams()),
                                                           TslBL::CurveEval(TslBL::PeakDetectParams())}));
  const Outcome outcome = Run({"--chain", written.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr(written.Path() + ": command 1: Charge State Deconvolution must be the last command"));
}

TEST_F(Decon, WritesCurveAndPicture) {
  const Outcome outcome = Run({"--quiet", "--curve", In("mass.tsv"), "--plot", In("plot.svg")});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(LinesOf(ReadFile(In("mass.tsv"))).front(), "scan\trt_s\tmass\tdensity");
  EXPECT_TRUE(IsDocument(ReadFile(In("plot.svg"))));
}

TEST_F(Decon, MakesTheEditsOfOneSpectrumInTheirOrder) {
  const Outcome outcome = Run({"--format", "tsv", "--remove-series", "UA", "--add-series",
                               "unresolved:997.9,1060.5", "--remove-peaks", "UB:1030.97"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 2U) << outcome.out;
  EXPECT_NEAR(std::stod(rows[0].at("mass")), kLarge.mass, 0.2);
}

TEST_F(Decon, MakesTheEditsOfAFile) {
  const TempFile edits("edits.tsv", "1 remove-series UA\n7 remove-series UA\n");
  const Outcome outcome = Run({"--format", "tsv", "--edits", edits.Path()});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(RowsOf(outcome.out).size(), 1U);
  EXPECT_THAT(outcome.err, HasSubstr("scan 7 has edits and was not evaluated"));
}

TEST_F(Decon, RefusesWhatCannotBe) {
  const TempFile edits("edits.tsv", "1 remove-series UA\n");
  const std::pair<Arguments, const char*> cases[] = {
      {{"--mass", "9-8000"}, "--mass: 9-8000 is no range within 100 to 100000000"},
      {{"--adduct", "gold"}, "--adduct: "},
      {{"--molecule", "Xx"}, "--molecule: "},
      {{"--edits", edits.Path(), "--remove-series", "UA"}, "--edits excludes --add-series and the like"},
      {{"--remove-series", "1"}, "--remove-series: \"1\" is no label of a series"},
      {{"--edits", edits.Path(), "--output", edits.Path()}, "the --edits as well"},
  };
  for (const auto& [words, message] : cases) {
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_THAT(outcome.err, HasSubstr(message));
  }
}

TEST_F(Decon, NamesTheScanOfAnEditThatCannotBeMade) {
  const Outcome outcome = Run({"--remove-series", "RZ"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("proteins.txt: scan 1: series RZ cannot be removed: there is no such "
                                     "series"));
}

TEST_F(Decon, LeavesAnEmptyTableWhereThereIsNothing) {
  const TempFile one("one.txt", "500 100\n700 50\n");
  const Outcome outcome = On(one.Path(), {"--centroid", "--format", "tsv"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(LinesOf(outcome.out).size(), 1U);
  EXPECT_THAT(outcome.err, HasSubstr("0 series in 0 of 1 spectra"));
}

TEST_F(Decon, ScalesListsToo) {
  const TempFile list("list.txt", "500.5 100\n501.5 60\n502.5 20\n503.5 5\n");
  const auto intensity = [&](const Arguments& more) {
    Arguments words = {"--centroid", "--format", "tsv", "--resolved"};
    words.insert(words.end(), more.begin(), more.end());
    const std::vector<Row> rows = RowsOf(On(list.Path(), words).out);
    return rows.empty() ? 0.0 : std::stod(rows[0].at("intensity"));
  };
  EXPECT_GT(intensity({}), 0.0);
  EXPECT_NEAR(intensity({"--scale", "1000"}), 1000.0 * intensity({}), 1e-6);
}

}  // namespace
}  // namespace tests
