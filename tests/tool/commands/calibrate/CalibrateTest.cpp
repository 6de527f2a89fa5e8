// The command calibrate, as its user sees it.
// Tests: ApplyToInput.cpp, Calibrate.cpp, CalibrateSpectrum.cpp, MassScale.cpp, OneSpectrum.cpp.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/MzMLReading.h>
#include <tool/io/RunMaker.h>
#include <tslbl/calibrate/CalFile.h>
#include <tslbl/closed/common/Text.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslBL::MZCalPt;

// Where the instrument of the tests shows an ion: off by 0.1 m/z at 100 and by 0.26 at 900.
double Shown(double mz) { return mz + 0.08 + 0.0002 * mz; }

// A text of ions at their wrong places, in a folder of its own.
class WrongAxis {
 public:
  explicit WrongAxis(const std::vector<double>& ions = {150, 300, 500, 700, 900}, double step = 0.05)
      : file_("in.txt", Profile(ions, step)) {
    std::string text;
    for (const double ion : ions) text += fmt::format("ion{} {}\n", ion, ion);
    calibrants_ = Write("ions.txt", text);
  }
  std::string Input() const { return file_.Path(); }
  std::string Calibrants() const { return calibrants_; }
  std::string Beside(const std::string& name) const { return file_.Folder() + "/" + name; }
  std::string Write(const std::string& name, const std::string& text) const {
    std::ofstream(Beside(name)) << text;
    return Beside(name);
  }
  std::vector<std::string> Names() const { return NamesIn(file_.Folder()); }
  Outcome Calibrate(const Arguments& more = {}) const {
    Arguments words = {"calibrate", Input(), "--calibrants", Calibrants(), "-q"};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }
  std::vector<Row> Rows(Arguments more = {}) const {
    more.insert(more.end(), {"--format", "tsv"});
    return RowsOf(Calibrate(more).out);
  }

 private:
  static std::string Profile(const std::vector<double>& ions, double step) {
    std::string text;
    for (double mz = 100; mz < 1000; mz += step) {
      double amplitude = 10 + std::fmod(mz * 7919, 3);
      for (const double ion : ions) amplitude += 1e5 * std::exp(-std::pow((mz - Shown(ion)) / 0.3, 2));
      text += fmt::format("{} {}\n", mz, amplitude);
    }
    return text;
  }

  TempFile file_;
  std::string calibrants_;
};

TEST(Calibrate, TellsWhereIonsStandBeforeAndAfter) {
  const WrongAxis wrong;
  const std::vector<Row> rows = wrong.Rows();
  ASSERT_EQ(rows.size(), 5U);
  for (const Row& row : rows) {
    const double expected = std::stod(row.at("mz_expected"));
    EXPECT_NEAR(std::stod(row.at("mz_before")), Shown(expected), 0.002);
    EXPECT_NEAR(std::stod(row.at("mz_after")), expected, 1e-9);
    EXPECT_NEAR(std::stod(row.at("ppm_before")), (Shown(expected) / expected - 1) * 1e6, 10);
    EXPECT_EQ(row.at("status"), "used");
  }
}

TEST(Calibrate, ALineBetweenTwoMendsWhatIsOnALine) {
  const WrongAxis wrong;
  for (const Row& row : wrong.Rows({"--off", "ion300", "--off", "ion500", "--off", "ion700"})) {
    EXPECT_NEAR(std::stod(row.at("mz_after")), std::stod(row.at("mz_expected")), 0.002);
    EXPECT_EQ(row.at("status"),
              row.at("calibrant") == "ion150" || row.at("calibrant") == "ion900" ? "used" : "off");
  }
}

TEST(Calibrate, ACalibrantWithoutAPeakIsToldAndTakesNoPart) {
  const WrongAxis wrong;
  wrong.Write("ions.txt", "A 150\nnone 400\nB 900\n");
  const std::vector<Row> rows = wrong.Rows();
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[1].at("status"), "no peak");
  EXPECT_EQ(rows[1].at("mz_before") + rows[1].at("mz_after"), "");
  EXPECT_EQ(rows[2].at("status"), "used");
}

TEST(Calibrate, TheToleranceSaysHowFarAPeakMayBe) {
  const WrongAxis wrong;
  EXPECT_EQ(wrong.Rows({"--tolerance", "0.2"})[4].at("status"), "no peak");
  EXPECT_EQ(wrong.Rows({"--tolerance", "0.3"})[4].at("status"), "used");
}

TEST(Calibrate, APointIsMovedToThePeakThatTheUserNames) {
  const WrongAxis wrong;
  wrong.Write("ions.txt", "A 150\nX 498.5\nB 900\n");
  EXPECT_EQ(wrong.Rows()[1].at("status"), "no peak");
  const Row moved = wrong.Rows({"--move", fmt::format("X={}", Shown(500))})[1];
  EXPECT_EQ(moved.at("status"), "used");
  EXPECT_NEAR(std::stod(moved.at("mz_before")), Shown(500), 0.002);
  EXPECT_NEAR(std::stod(moved.at("mz_after")), 498.5, 1e-9);
}

TEST(Calibrate, ACorrectionThatCannotBeMadeIsWrongUsage) {
  const WrongAxis wrong;
  const std::pair<Arguments, const char*> table[] = {
      {{"--off", "nobody"}, "--off: there is no calibrant \"nobody\""},
      {{"--move", "nobody=5"}, "--move: there is no calibrant \"nobody\""},
      {{"--move", "ion500"}, "--move: \"ion500\" is not NAME=MZ"},
      {{"--move", "ion500=x"}, "--move"},
      {{"--move", "ion500=900.26"}, "--move: ion500 to m/z 900.26: "},
      {{"--move", "ion500=600"}, "--move: ion500 to m/z 600: "},
  };
  for (const auto& [words, text] : table) {
    const Outcome outcome = wrong.Calibrate(words);
    EXPECT_EQ(outcome.status, 2) << text;
    EXPECT_THAT(outcome.err, HasSubstr(text));
  }
}

TEST(Calibrate, TooFewAreAnErrorWithTheTableBeforeIt) {
  const WrongAxis wrong;
  wrong.Write("ions.txt", "A 150\nnone 400\n");
  const Outcome outcome = wrong.Calibrate({"-o", wrong.Beside("a.cal"), "--plot", wrong.Beside("a.svg")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("in.txt: At least two calibrant peaks must be assigned."));
  EXPECT_THAT(outcome.out, HasSubstr("no peak"));
  EXPECT_THAT(wrong.Names(), ElementsAre("in.txt", "ions.txt"));
}

TEST(Calibrate, WithoutPeaksIsAnError) {
  const WrongAxis wrong;
  std::string flat;
  for (int i = 0; i < 200; ++i) flat += fmt::format("{} 1\n", 100 + 0.1 * i);
  wrong.Write("in.txt", flat);
  const Outcome outcome = wrong.Calibrate({"--profile", "-o", wrong.Beside("a.cal")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Peak detect found no peaks."));
  wrong.Write("in.txt", "100 1\n");
  EXPECT_EQ(wrong.Calibrate().status, 1);
  EXPECT_THAT(wrong.Names(), ElementsAre("in.txt", "ions.txt"));
}

TEST(Calibrate, ATextIsPutOnTheNewAxis) {
  const WrongAxis wrong;
  ASSERT_EQ(wrong.Calibrate({"-o", wrong.Beside("a.cal")}).status, 0);
  const Outcome applied =
      RunTool({"calibrate", wrong.Input(), "--apply", wrong.Beside("a.cal"), "-o", wrong.Beside("out.txt")});
  ASSERT_EQ(applied.status, 0) << applied.err;
  EXPECT_EQ(LinesOf(ReadFile(wrong.Beside("out.txt"))).size(), LinesOf(ReadFile(wrong.Input())).size() + 1);
  const auto rows = RowsOf(RunTool({"calibrate", wrong.Beside("out.txt"), "--calibrants", wrong.Calibrants(),
                                    "-q", "--format", "tsv"})
                               .out);
  for (const Row& row : rows)
    EXPECT_NEAR(std::stod(row.at("mz_before")), std::stod(row.at("mz_expected")), 0.0005);
}

// Ions as narrow as those of a Fourier transform instrument, whose points lie the wider the higher m/z is.
std::string NarrowProfile(const std::string& id, double ppm) {
  Values mz, amplitude;
  for (double at = 200; at < 1200; at += 1.2e-7 * std::pow(at, 1.5)) {
    double sum = 0.0;
    bool isNear = false;
    for (const double ion : {250.1, 400.2, 600.3, 800.4, 1100.5}) {
      const double width = 3e-7 * std::pow(ion, 1.5);
      sum += 1e6 * std::exp(-std::pow((at - ion * (1 + ppm * 1e-6)) / width, 2));
      isNear = isNear || std::abs(at - ion) < 0.2;
    }
    if (!isNear) continue;
    mz.push_back(at);
    amplitude.push_back(sum);
  }
  return SpectrumOf(id, mz.size(),
                    ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(amplitude)),
                    Term("MS:1000511", "value=\"1\"") + Term(kProfile));
}

TEST(Calibrate, NarrowIonsTenPpmOffEndBelowOne) {
  const TempFile file("in.mzML", MzML(NarrowProfile("scan=1", 10) + NarrowProfile("scan=2", 10), 2));
  const std::string folder = file.Folder();
  std::ofstream(folder + "/ions.txt") << "a 250.1\nc 600.3\ne 1100.5\n";
  std::ofstream(folder + "/all.txt") << "a 250.1\nb 400.2\nc 600.3\nd 800.4\ne 1100.5\n";
  const auto calibrate = [&](const std::string& name, const std::string& ions, const Arguments& more) {
    Arguments words = {"calibrate",
                       folder + "/" + name,
                       "--calibrants",
                       folder + "/" + ions,
                       "-q",
                       "--format",
                       "tsv",
                       "--tolerance",
                       "0.05",
                       "--scan",
                       "1"};
    words.insert(words.end(), more.begin(), more.end());
    const Outcome outcome = RunTool(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return RowsOf(outcome.out);
  };
  for (const Row& row : calibrate("in.mzML", "ions.txt", {"-o", folder + "/a.cal"}))
    EXPECT_NEAR(std::stod(row.at("ppm_before")), 10, 0.05);
  const Outcome applied =
      RunTool({"calibrate", file.Path(), "--apply", folder + "/a.cal", "-o", folder + "/out.mzML"});
  ASSERT_EQ(applied.status, 0) << applied.err;
  for (const Row& row : calibrate("out.mzML", "all.txt", {}))
    EXPECT_NEAR(std::stod(row.at("ppm_before")), 0, 0.05) << row.at("calibrant");
  EXPECT_EQ(ReadAll(folder + "/out.mzML").size(), 2U);
}

// The demonstration run seen through an instrument that is off.
class WrongRun {
 public:
  WrongRun() {
    RunTool({"simulate", "-o", Path("demo.run"), "--scans", "3"});
    std::vector<MZCalPt> points = DemoTune().MZCalPts;
    for (MZCalPt& point : points) point.MZ = Shown(point.MZ);
    TslBL::SaveCalFile(TslCommon::FromUtf8(Path("wrong.cal")), points);
    RunTool({"calibrate", Path("demo.run"), "--apply", Path("wrong.cal"), "-o", Path("wrong.run")});
    std::ofstream(Path("ions.txt")) << "tributylamine 186.221626\nphosphazine 322.048123\n";
  }
  std::string Path(const std::string& name) const { return folder_.Folder() + "/" + name; }
  Outcome Calibrate(const std::string& run, const Arguments& more) const {
    Arguments words = {"calibrate", Path(run), "--calibrants", Path("ions.txt"), "-q", "--format", "tsv"};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

 private:
  TempFile folder_{"x", ""};
};

TEST(Calibrate, ARunKeepsItsCountsAndItsTuneOnANewAxis) {
  const WrongRun wrong;
  for (const Row& row : RowsOf(wrong.Calibrate("wrong.run", {"-o", wrong.Path("a.cal")}).out))
    EXPECT_NEAR(std::stod(row.at("mz_before")), Shown(std::stod(row.at("mz_expected"))), 0.01);
  const Outcome applied = RunTool(
      {"calibrate", wrong.Path("wrong.run"), "--apply", wrong.Path("a.cal"), "-o", wrong.Path("right.run")});
  ASSERT_EQ(applied.status, 0) << applied.err;
  for (const Row& row : RowsOf(wrong.Calibrate("right.run", {}).out))
    EXPECT_NEAR(std::stod(row.at("mz_before")), std::stod(row.at("mz_expected")), 1e-6);
  EXPECT_EQ(ReadRun(wrong.Path("right.run")), ReadRun(wrong.Path("demo.run")));
  EXPECT_THAT(RunTool({"info", wrong.Path("right.run")}).out, HasSubstr("  m/z axis    by 2 other points\n"));
  EXPECT_EQ(TslTool::RunReader(wrong.Path("right.run")).Tunes(),
            TslTool::RunReader(wrong.Path("demo.run")).Tunes());
}

TEST(Calibrate, ARunKeepsTheMethodThatAcquiredIt) {
  const WrongRun wrong;
  TslBL::Method method;
  method.Desc = L"Night";
  {
    TslTool::RunWriter writer(wrong.Path("method.run"), "");
    writer.AddMethod(method);
    writer.AddTune(1, DemoTune());
    writer.Finish();
  }
  ASSERT_EQ(wrong.Calibrate("demo.run", {"-o", wrong.Path("a.cal")}).status, 0);
  ASSERT_EQ(RunTool({"calibrate", wrong.Path("method.run"), "--apply", wrong.Path("a.cal"), "-o",
                     wrong.Path("b.run")})
                .status,
            0);
  const TslTool::RunReader copy(wrong.Path("b.run"));
  ASSERT_NE(copy.AcquiredBy(), nullptr);
  EXPECT_EQ(*copy.AcquiredBy(), method);
}

TEST(Calibrate, ACalibrationOfAnotherKindOfAxisIsRefused) {
  const WrongRun run;
  const WrongAxis text;
  ASSERT_EQ(run.Calibrate("demo.run", {"-o", run.Path("dac.cal")}).status, 0);
  ASSERT_EQ(text.Calibrate({"-o", text.Beside("mz.cal")}).status, 0);
  const Outcome onText =
      RunTool({"calibrate", text.Input(), "--apply", run.Path("dac.cal"), "-o", text.Beside("out.txt")});
  EXPECT_EQ(onText.status, 1);
  EXPECT_THAT(onText.err, HasSubstr("dac.cal: point \"tributylamine\": "));
  const Outcome onRun = RunTool(
      {"calibrate", run.Path("demo.run"), "--apply", text.Beside("mz.cal"), "-o", run.Path("out.run")});
  EXPECT_EQ(onRun.status, 1);
  EXPECT_THAT(onRun.err, HasSubstr("that is the calibration of another kind of axis"));
  EXPECT_FALSE(std::filesystem::exists(text.Beside("out.txt")));
  EXPECT_FALSE(std::filesystem::exists(run.Path("out.run")));
}

TEST(Calibrate, ScansOfSeveralLengthsHaveNoAxisInCommon) {
  const SmallRun small;
  std::ofstream(small.Folder() + "/ions.txt") << "A 100\nB 110\n";
  const Outcome outcome = RunTool({"calibrate", small.Path(), "--calibrants", small.Folder() + "/ions.txt"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("several tunes or lengths; --scan chooses those of one"));
}

TEST(Calibrate, WhatIsWrongIsToldAndNothingIsWritten) {
  const WrongAxis wrong;
  const std::string in = wrong.Input(), ions = wrong.Calibrants();
  const std::string cut = wrong.Write("cut.cal", std::string("\1\0\0\0\5\0\0\0", 8));
  const struct {
    Arguments words;
    int status;
    const char* text;
  } table[] = {
      {{}, 2, "INPUT is required"},
      {{in}, 2, "one of --calibrants FILE and --apply FILE is required"},
      {{in, "--calibrants", ions, "--apply", cut}, 2, "--calibrants and --apply exclude each other"},
      {{in, "--calibrants", ions, "--tolerance", "0"}, 2, "--tolerance: it must be above 0"},
      {{in, "--calibrants", ions, "-o", "-"}, 2, "--output: a file is needed"},
      {{in, "--calibrants", ions, "-o", in}, 2, "is the input"},
      {{in, "--calibrants", ions, "-o", ions}, 2, "is the file of --calibrants"},
      {{in, "--calibrants", ions, "--plot", in}, 2, "is the input"},
      {{in, "--calibrants", in + "x"}, 1, "in.txtx: "},
      {{in + "x", "--calibrants", ions}, 1, "in.txtx: "},
      {{in, "--apply", cut}, 2, "--apply: --output FILE is required"},
      {{in, "--apply", cut, "-o", wrong.Beside("o.txt")}, 1, "cut.cal: is damaged or cut short: "},
      {{in, "--apply", ions, "-o", wrong.Beside("o.txt")}, 1, "ions.txt: is no calibration file"},
      {{in, "--apply", cut, "-o", wrong.Beside("o.txt"), "--scan", "1"},
       2,
       "--scan and --apply exclude each other"},
  };
  for (const auto& row : table) {
    Arguments words = {"calibrate"};
    words.insert(words.end(), row.words.begin(), row.words.end());
    const Outcome outcome = RunTool(words);
    EXPECT_EQ(outcome.status, row.status) << row.text;
    EXPECT_THAT(outcome.err, HasSubstr(row.text));
  }
  EXPECT_THAT(wrong.Names(), ElementsAre("cut.cal", "in.txt", "ions.txt"));
}

TEST(Calibrate, TheOutputIsNamedAsTheInputIs) {
  const WrongAxis wrong;
  ASSERT_EQ(wrong.Calibrate({"-o", wrong.Beside("a.cal")}).status, 0);
  const Outcome outcome =
      RunTool({"calibrate", wrong.Input(), "--apply", wrong.Beside("a.cal"), "-o", wrong.Beside("o.mzML")});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("will be text, as the input is"));
  EXPECT_FALSE(std::filesystem::exists(wrong.Beside("o.mzML")));
}

TEST(Calibrate, APipeIsCalibratedButHasNoNewAxis) {
  const WrongAxis wrong;
  const std::string pipe = "cat '" + wrong.Input() + "' | \"$TSLBL\" calibrate - ";
  const std::string made =
      pipe + "--calibrants '" + wrong.Calibrants() + "' -q -o '" + wrong.Beside("a.cal") + "'";
  EXPECT_EQ(RunShell(made).out, wrong.Calibrate().out);
  const Outcome applied =
      RunShell(pipe + "--apply '" + wrong.Beside("a.cal") + "' -o '" + wrong.Beside("o.txt") + "'");
  EXPECT_EQ(applied.status, 2);
  EXPECT_THAT(applied.err, HasSubstr("--apply: INPUT must be a file"));
}

TEST(Calibrate, DrawsTheDeviations) {
  const WrongAxis wrong;
  ASSERT_EQ(wrong.Calibrate({"--plot", wrong.Beside("a.svg")}).status, 0);
  EXPECT_THAT(ReadFile(wrong.Beside("a.svg")), HasSubstr("</svg>"));
}

}  // namespace
}  // namespace tests
