// Tests: RampBest.cpp, EvaluateRamp.cpp, RampTable.cpp, WriteRampResults.cpp, StepCurve.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include <tool/commands/ramp/RampRun.h>
#include <tool/simulate/LensModel.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using TslBL::TuneField;

// The capillary exit from 60 to 195 V in steps of 15.
const RampRun& CapExit() {
  static const RampRun run(Ramp(ShortTune(100, 700), {TuneField::CapExit, Walk(60, 195, 15)}, 2));
  return run;
}

double TrueCapExit(double mz) {
  return TslTool::LensModel::BestValue(TuneField::CapExit, TslCommon::PolarityPositive, mz).value();
}

using BestOf = std::map<std::string, double>;
BestOf BestByMz(const Outcome& outcome, const std::string& lens) {
  BestOf best;
  for (const Row& row : RowsOf(outcome.out))
    if (row.at("best") == "1") best[row.at("mz")] = std::stod(row.at(lens));
  return best;
}

TEST(RampBest, FindsTheBestValueOfEachIon) {
  const Outcome outcome = CapExit().Best({"--mz", "118,322,622", "--by", "amplitude", "--format", "tsv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const BestOf best = BestByMz(outcome, "CapExit");
  ASSERT_EQ(best.size(), 3U);
  for (const auto& [mz, value] : best) EXPECT_LE(std::abs(value - TrueCapExit(std::stod(mz))), 7.5) << mz;
  EXPECT_EQ(RowsOf(outcome.out).size(), 3 * 10U);
  EXPECT_EQ(RowsOf(outcome.out)[0].at("spectra"), "2");
}

// Amplitudes fall as the Gaussian of the lens does, 45 V wide.
TEST(RampBest, TheResponseIsThatOfTheLens) {
  const auto rows = RowsOf(CapExit().Best({"--mz", "322", "--by", "amplitude", "--format", "tsv"}).out);
  const double truth = TrueCapExit(322);
  const auto through = [&](double value) { return std::exp(-0.5 * std::pow((value - truth) / 45, 2)); };
  const double top = std::stod(rows[4].at("amplitude")) / through(120);
  for (const Row& row : rows)
    EXPECT_NEAR(std::stod(row.at("amplitude")) / top, through(std::stod(row.at("CapExit"))), 0.03)
        << row.at("CapExit");
}

TEST(RampBest, TheTableHasTheBestValuesAndTheCurveThatFollows) {
  const Outcome outcome = CapExit().Best({"--mz", "118,322,622", "--by", "amplitude"});
  EXPECT_THAT(outcome.out,
              StartsWith("10 steps, chosen by amplitude\n\nm/z             CapExit   m/z found   amplitude"));
  for (const char* row :
       {"\n118                 105 ", "\n322                 120 ", "\n622                 135 ",
        "\noverall ",
        "\nCapExit, V over m/z\n39                  100\n118                 105\n322                 120\n"
        "622                 135\n1521                140\n2721                170\n"})
    EXPECT_THAT(outcome.out, HasSubstr(row));
}

TEST(RampBest, JsonHasTheSame) {
  const auto json =
      nlohmann::json::parse(CapExit().Best({"--mz", "322,118", "--by", "amplitude", "--format", "json"}).out);
  EXPECT_EQ(json["by"], "amplitude");
  EXPECT_EQ(json["lenses"][0]["lens"], "CapExit");
  EXPECT_EQ(json["lenses"][0]["curve"][1], nlohmann::json({118.0, 105.0}));
  EXPECT_EQ(json["steps"].size(), 10U);
  EXPECT_EQ(json["steps"][0]["values"][0], 60.0);
  EXPECT_EQ(json["mz"][1]["mz"], 322.0);
  EXPECT_EQ(json["mz"][1]["best"], 4);
  EXPECT_NEAR(json["mz"][1]["peaks"][4]["mz"].get<double>(), 322.05, 0.05);
  EXPECT_TRUE(json["unseen"].empty());
}

TEST(RampBest, WritesTheResultIntoATune) {
  const RampRun run(Ramp(ShortTune(100, 700), {TuneField::CapExit, Walk(90, 165, 15)}, 2));
  const Outcome outcome = run.Best(
      {"--mz", "118,322,622", "--by", "amplitude", "--write", run.Tune(), "-o", run.Beside("table.txt")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("tslbl: " + run.Tune() + ": CapExit: 160 -> 1"));
  const auto tune = TslBL::FromXml<TslBL::Tune>(TslCommon::FromUtf8(ReadFile(run.Tune())));
  EXPECT_EQ(tune.ControlData.CapExit.Type, TslBL::IOPoint::SingleType);
  EXPECT_NEAR(tune.ControlData.CapExit.Single, TrueCapExit(300), 15);
  std::map<double, double> curve;
  for (const auto& point : tune.Q1CalPts) curve[point.MZ] = point.Fields.at(TuneField::CapExit);
  EXPECT_EQ(curve, (std::map<double, double>{
                       {39, 100}, {118, 105}, {322, 120}, {622, 135}, {1521, 140}, {2721, 170}}));
}

TEST(RampBest, WhatATuneRefusesLeavesItAsItWas) {
  const RampRun run(Ramp(ShortTune(100, 700), {TuneField::CapExit, Walk(100, 150, 10)}),
                    ShortTune(100, 700, TslCommon::PolarityNegative));
  const std::string before = ReadFile(run.Tune());
  const Outcome outcome = run.Best({"--mz", "322", "--write", run.Tune()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("tslbl: " + run.Tune() + ": the tune and the run are of opposite polarity\n"));
  EXPECT_EQ(ReadFile(run.Tune()), before);
  TslBL::DevTuneRules apci(TslBL::Probes::APCI);
  const RampRun other(Ramp(ShortTune(100, 700), {TuneField::CapExit, Walk(100, 150, 10)}), apci);
  EXPECT_THAT(other.Best({"--mz", "322", "--write", other.Tune()}).err,
              HasSubstr("are of different probes\n"));
}

// The highest `of` among the rows whose `at` is within `percent` of its highest.
std::string PlainBest(const std::vector<Row>& rows, const char* of, const char* at, double percent) {
  const auto number = [](const Row& row, const char* name) { return std::stod(row.at(name)); };
  double highest = 0.0, best = 0.0;
  for (const Row& row : rows) highest = std::max(highest, number(row, at));
  std::string value;
  for (const Row& row : rows) {
    if (number(row, at) < highest * (1 - percent / 100) || number(row, of) <= best) continue;
    best = number(row, of);
    value = row.at("Q1Resolution");
  }
  return value;
}

TEST(RampBest, ChoosesByWhatItIsTold) {
  const RampRun run(Ramp(ShortTune(300, 700), {TuneField::Q1Resolution, Walk(-60, 20, 20)}, 3));
  const auto rowsBy = [&](const char* by, const char* percent) {
    return RowsOf(run.Best({"--mz", "322", "--by", by, "--percent", percent, "--format", "tsv"}).out);
  };
  const auto best = [&](const std::vector<Row>& rows) {
    return std::ranges::find_if(rows, [](const Row& row) { return row.at("best") == "1"; })
        ->at("Q1Resolution");
  };
  EXPECT_EQ(best(rowsBy("amplitude", "1")), "-60") << "more ions pass where lines are wide";
  EXPECT_EQ(best(rowsBy("resolution", "1")), "20");
  for (const char* percent : {"1", "10", "17", "25", "50"}) {
    const std::vector<Row> amplitude = rowsBy("amplitude-at-resolution", percent);
    EXPECT_EQ(best(amplitude), PlainBest(amplitude, "amplitude", "resolution", std::stod(percent)))
        << percent;
    const std::vector<Row> resolution = rowsBy("resolution-at-amplitude", percent);
    EXPECT_EQ(best(resolution), PlainBest(resolution, "resolution", "amplitude", std::stod(percent)))
        << percent;
  }
}

TEST(RampBest, SaysWhereTheBestValueStandsAtAnEnd) {
  const RampRun run(Ramp(ShortTune(300, 700), {TuneField::DetectorGain, Walk(-1500, -1100, 100)}));
  EXPECT_THAT(run.Best({"--mz", "322", "--by", "amplitude"}).err,
              HasSubstr("tslbl: warning: " + run.Path() +
                        ": m/z 322: the best DetectorGain, -1500, stands at an end of the ramp; a better one "
                        "may lie beyond\n"));
}

TEST(RampBest, TwoLensesMakeAGrid) {
  const RampRun run(Ramp(ShortTune(300, 700), {TuneField::CapExit, Walk(85, 165, 20)}, 2,
                         WalkedLens{TuneField::Skimmer, Walk(18, 48, 6)}));
  const Outcome outcome =
      run.Best({"--mz", "322,622", "--by", "amplitude", "--format", "tsv", "--write", run.Tune()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(RowsOf(outcome.out).size(), 2 * 5 * 6U);
  EXPECT_EQ(BestByMz(outcome, "CapExit"), (BestOf{{"322", 125}, {"622", 145}}));
  EXPECT_EQ(BestByMz(outcome, "Skimmer"), (BestOf{{"322", 30}, {"622", 36}}));
  const auto tune = TslBL::FromXml<TslBL::Tune>(TslCommon::FromUtf8(ReadFile(run.Tune())));
  EXPECT_NEAR(tune.ControlData.CapExit.Single, 135, 11);
  EXPECT_NEAR(tune.ControlData.Skimmer.Single, 33, 4);
}

TEST(RampBest, AnIonThatIsNotThereIsToldAndLeftOut) {
  const Outcome outcome = CapExit().Best({"--mz", "322,500", "--by", "amplitude", "--format", "tsv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr(": m/z 500: no step of the ramp shows a peak there; it is left out\n"));
  EXPECT_EQ(RowsOf(outcome.out).size(), 10U);
  const Outcome none = CapExit().Best({"--mz", "450,500"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.out, "");
  EXPECT_EQ(none.err, "tslbl: " + CapExit().Path() + ": no step of the ramp shows a peak at m/z 450, 500\n");
}

TEST(RampBest, ARunThatIsNoRampIsRefused) {
  const RampRun one(OneSpectrum());
  EXPECT_EQ(one.Best({"--mz", "322"}).err,
            "tslbl: " + one.Path() + ": the run has one tune, and a ramp has one for each value\n");
  const TempFile text("a.txt", "100 1\n101 2\n");
  EXPECT_EQ(RunTool({"ramp", "best", text.Path(), "--mz", "322"}).err,
            "tslbl: " + text.Path() + ": is no run, and a ramp is told by the tunes of a run\n");
}

TEST(RampBest, StepsWithoutASpectrumAreRefused) {
  EXPECT_THAT(CapExit().Best({"--mz", "322", "--scan", "1-10"}).err,
              HasSubstr(": no spectrum was measured at 135, a step of the ramp\n"));
}

TEST(RampBest, DrawsTheResponse) {
  const std::string file = CapExit().Beside("ramp.svg");
  ASSERT_EQ(CapExit().Best({"--mz", "118,322", "--plot", file}).status, 0);
  EXPECT_THAT(ReadFile(file), HasSubstr("CapExit, V"));
}

TEST(RampBest, WrongUsageIsStatus2) {
  const RampRun& run = CapExit();
  const std::pair<Arguments, const char*> cases[] = {
      {{}, "tslbl: --mz is required"},
      {{"--mz", "322,x"}, "tslbl: --mz: \"x\" is not a number"},
      {{"--mz", "322,"}, "tslbl: --mz: \"\" is not a number"},
      {{"--mz", "0"}, "tslbl: --mz: 0 is not above 0"},
      {{"--mz", "322,322"}, "tslbl: --mz: 322 is given twice"},
      {{"--mz", "322", "--window", "0"}, "tslbl: --window: it must be above 0"},
      {{"--mz", "322", "--percent", "101"}, "tslbl: --percent: 101 is not from 0 to 100"},
      {{"--mz", "322", "--lens", "MZLow"}, "tslbl: --lens: no ramp can walk MZLow"},
      {{"--mz", "322", "--write", run.Path()}, "tslbl: --write: "},
      {{"--mz", "322", "--plot", "a.png"}, "tslbl: --plot: "},
  };
  for (const auto& [words, message] : cases) {
    const Outcome outcome = run.Best(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_THAT(outcome.err, StartsWith(message));
  }
}

}  // namespace
}  // namespace tests
