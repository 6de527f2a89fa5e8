#include <tslbl/tune/LimitOverrides.h>

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/basicconfigurator.h>
#include <log4cxx/consoleappender.h>
#include <log4cxx/logger.h>
#include <log4cxx/patternlayout.h>

#include <sys/stat.h>

#include <tslbl/tune/TuneField.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tune/BesideLibrary.h"

namespace {

using namespace TslBL;
using testing::HasSubstr;
using testing::Not;
using tests::BesideLibrary;

LimitRows Rows(const std::string& text) {
  std::istringstream in(text);
  return ReadLimitRows(in);
}

struct FileText {
  const char* text;
  LimitRows rows;
};

TEST(LimitOverrides, RowsAreReadUpToTheFirstBadOne) {
  const FileText files[] = {
      {"", {}},
      {"   \n\t\n", {}},
      {"22 -300 300 1", {{22, {-300, 300, 1}}}},
      {"22\n-300\n300 \t 1\n5 30 40 2 ", {{22, {-300, 300, 1}}, {5, {30, 40, 2}}}},
      {"22 -300 300 1\n22 -10 10 1", {{22, {-10, 10, 1}}}},         // the last counts
      {"5 30 40 2\n22 300 -300 1\n23 -5 5 1", {{5, {30, 40, 2}}}},  // minimum above maximum
      {"5 30 40 2\n23 -50 50 200\n22 -5 5 1", {{5, {30, 40, 2}}}},  // step above the range
      {"23 -50 50 100", {{23, {-50, 50, 100}}}},                    // step equal to it
      {"5 30 30 0", {{5, {30, 30, 0}}}},                            // one value, no step
      {"5 30 30 1", {}},
      {"5 30 40 -2", {{5, {30, 40, -2}}}},  // sites know best
      {"999 1 2 1", {{999, {1, 2, 1}}}},
      {"abc", {}},
      {"5 30 forty 2", {}},
      {"5 30 40", {}},
      {"5 30 40 2 6", {{5, {30, 40, 2}}}},
      {"5 30 40 2\n# note\n6 30 40 2", {{5, {30, 40, 2}}}},
      {"5.5 30 40 2", {}},  // field 5 from 0.5 to 30 by 40
      {"5 1e1 1E2 .5", {{5, {10, 100, 0.5}}}},
      {"5 0 1e999 1", {}},
      {"99999999999999999999 1 2 1", {}},
      {"5 -1.7e308 1.7e308 1e308", {{5, {-1.7e308, 1.7e308, 1e308}}}},
      {"5 nan nan nan", {}},
      {"5 0 inf 1", {}},
  };
  for (const FileText& file : files) EXPECT_EQ(Rows(file.text), file.rows) << file.text;
}

TEST(LimitOverrides, RowsOfBytesWithoutSenseAreNone) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes.push_back(static_cast<char>(i * 37 % 251));
  EXPECT_EQ(Rows(bytes), LimitRows());
}

// Every log line goes to standard error, with what is known of it.
void LogToStandardError() {
  static bool done = false;
  if (std::exchange(done, true)) return;
  const auto layout = std::make_shared<log4cxx::PatternLayout>(LOG4CXX_STR("[%c|%p|%f|%m]%n"));
  log4cxx::BasicConfigurator::configure(
      std::make_shared<log4cxx::ConsoleAppender>(layout, LOG4CXX_STR("System.err")));
}

Limits Common(int field) {
  LogToStandardError();
  return FieldLimits().QLimits(field);
}
Limits OfProbe(Probes::ProbeTypes probe, int field) {
  LogToStandardError();
  return FieldLimits().QLimits(probe, field);
}

constexpr const char* kLogged = "Tune Field Limits Override Successful: ";

std::string LogLine(const BesideLibrary& site) {
  return std::string("[tslbl|WARN|LimitOverrides.cpp|") + kLogged + site.Folder().string() +
         "/overrides.txt]\n";
}

TEST(LimitOverridesFile, WithoutOneTheTablesStandAndNothingIsLogged) {
  const BesideLibrary site;
  EXPECT_BESIDE_LIBRARY(site, Common(22) == (Limits{-400, 400, 1}), Not(HasSubstr("Override")));
}

TEST(LimitOverridesFile, IsLoggedOnceWithItsPath) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1\n");
  EXPECT_BESIDE_LIBRARY(site, Common(22) == Common(22) && Common(5).Min == 25, testing::StrEq(LogLine(site)));
}

TEST(LimitOverridesFile, IsNotLoggedBelowTheLevel) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1\n");
  const auto quiet = [] {
    log4cxx::Logger::getLogger("tslbl")->setLevel(log4cxx::Level::getError());
    return Common(22).Max;
  };
  EXPECT_BESIDE_LIBRARY(site, quiet() == 300, Not(HasSubstr("Override")));
}

TEST(LimitOverridesFile, ARowForAllProbesChangesItForEachOfThem) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1");
  const auto all = [] {
    const FieldLimits limits;
    const Limits row{-300, 300, 1};
    return limits.QLimits(22) == row && limits.QLimits(Probes::ESI, 22) == row &&
           limits.QLimits(Probes::APCI, 22) == row && limits.QLimits(Probes::LowFlowESI, 22) == row;
  };
  EXPECT_BESIDE_LIBRARY(site, all(), "");
}

TEST(LimitOverridesFile, ARowOfOneProbeChangesThatProbe) {
  const BesideLibrary site("overrides.txt", "1 -1000 1000 1");
  const Limits row{-1000, 1000, 1};
  EXPECT_BESIDE_LIBRARY(site, OfProbe(Probes::ESI, 1) == row && OfProbe(Probes::LowFlowESI, 1) == row, "");
}

TEST(LimitOverridesFile, ARowNeverAddsAField) {
  const BesideLibrary site("overrides.txt", "1 -1000 1000 1\n48 1 2 1");
  EXPECT_BESIDE_LIBRARY(
      site, OfProbe(Probes::APCI, 1) == Limits() && Common(1) == Limits() && Common(48) == Limits(), kLogged);
}

TEST(LimitOverridesFile, ARowOfTwoProbesChangesBoth) {
  const BesideLibrary site("overrides.txt", "2 -10 10 1");
  const Limits row{-10, 10, 1};
  EXPECT_BESIDE_LIBRARY(site, OfProbe(Probes::ESI, 2) == row && OfProbe(Probes::APCI, 2) == row, "");
}

TEST(LimitOverridesFile, RowsBeforeABadOneStayAndTheFileIsLogged) {
  const BesideLibrary site("overrides.txt", "5 30 300 10\n22 300 -300 1\n23 -5 5 1");
  EXPECT_BESIDE_LIBRARY(site,
                        Common(5) == (Limits{30, 300, 10}) && Common(22) == (Limits{-400, 400, 1}) &&
                            Common(23) == (Limits{-100, 100, 0.1}),
                        HasSubstr(LogLine(site)));
}

TEST(LimitOverridesFile, AStepAboveTheRangeStopsTheReading) {
  const BesideLibrary site("overrides.txt", "23 -50 50 200\n22 -300 300 1");
  EXPECT_BESIDE_LIBRARY(site, Common(23).Max == 100 && Common(22).Max == 400, HasSubstr(LogLine(site)));
}

TEST(LimitOverridesFile, WithoutRowsIsLoggedAndChangesNothing) {
  for (const char* text : {"", "garbage \x01\xff\n", "22"}) {
    const BesideLibrary site("overrides.txt", text);
    EXPECT_BESIDE_LIBRARY(site, Common(22) == (Limits{-400, 400, 1}), HasSubstr(LogLine(site)));
  }
}

TEST(LimitOverridesFile, OfHugeNumbersDoesNoHarm) {
  const BesideLibrary site("overrides.txt", "22 -1e308 1e308 1\n23 0 1e999 1\n");
  EXPECT_BESIDE_LIBRARY(site, Common(22).Max == 1e308 && Common(23).Max == 100, HasSubstr(LogLine(site)));
}

TEST(LimitOverridesFile, ThatIsAFolderIsNone) {
  const BesideLibrary site;
  std::filesystem::create_directories(site.Folder() / "overrides.txt");
  EXPECT_BESIDE_LIBRARY(site, Common(22).Max == 400, Not(HasSubstr("Override")));
}

TEST(LimitOverridesFile, ThatIsAPipeIsNone) {
  const BesideLibrary site;
  if (!site.InChild()) {
    ASSERT_EQ(mkfifo((site.Folder() / "overrides.txt").c_str(), 0600), 0);
  }
  EXPECT_BESIDE_LIBRARY(site, Common(22).Max == 400, Not(HasSubstr("Override")));
}

// A log that cannot be written.
class FullDisk final : public log4cxx::AppenderSkeleton {
 public:
  void append(const log4cxx::spi::LoggingEventPtr&, log4cxx::helpers::Pool&) override {
    throw std::runtime_error("the disk is full");
  }
  void close() override {}
  bool requiresLayout() const override { return false; }
};

TEST(LimitOverridesFile, CountsThoughItsLineCannotBeLogged) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1");
  const auto counts = [&] {
    log4cxx::Logger::getLogger("tslbl")->addAppender(std::make_shared<FullDisk>());
    bool thrown = false;
    try {
      FieldLimits().QLimits(22);
    } catch (const std::runtime_error&) {
      thrown = true;
    }
    std::ofstream(site.Folder() / "overrides.txt") << "22 -200 200 1";
    return thrown && FieldLimits().QLimits(22).Max == 300 && FieldLimits().QMinMaxStep(22).Max == 300;
  };
  EXPECT_BESIDE_LIBRARY(site, counts(), "");
}

TEST(LimitOverridesFile, IsReadOnceForTheLifeOfTheProcess) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1");
  const auto changed = [&] {
    const double before = FieldLimits().QLimits(22).Max;
    std::ofstream(site.Folder() / "overrides.txt") << "22 -200 200 1";
    return before == 300 && FieldLimits().QLimits(22).Max == 300;
  };
  EXPECT_BESIDE_LIBRARY(site, changed(), "");
}

TEST(LimitOverridesFile, WrittenAfterTheFirstUseIsNotRead) {
  const BesideLibrary site;
  const auto later = [&] {
    const double before = FieldLimits().QMinMaxStep(22).Max;
    std::ofstream(site.Folder() / "overrides.txt") << "22 -200 200 1";
    return before == 400 && FieldLimits().QLimits(22).Max == 400;
  };
  EXPECT_BESIDE_LIBRARY(site, later(), "");
}

TEST(LimitOverridesFile, CountsForWhateverAsksFirst) {
  const BesideLibrary site("overrides.txt", "10 50 2000 0.1\n25 -20 10 0.05\n34 -80 70 0.05");
  EXPECT_BESIDE_LIBRARY(site, DevTuneRules::QMinMz() == 50 && DevTuneRules::QMaxMz() == 2000, "");
  EXPECT_BESIDE_LIBRARY(site, FieldLimits().QMinMaxStep(36) == (Limits{-200, 180, 0.1}), "");
  EXPECT_BESIDE_LIBRARY(site, DevTuneRules::TranslateField(TuneField::MZ, 10) == 100, "");
}

}  // namespace
