// What peak detection tells the logger "tbb".

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>

#include <detect/PeakCurves.h>
#include <algorithm>

using namespace TslBL;
using namespace tests;

namespace {

// Keeps the messages.
class Messages final : public log4cxx::AppenderSkeleton {
 public:
  std::vector<std::string> texts;

  void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool&) override {
    LOG4CXX_ENCODE_CHAR(message, event->getMessage());
    texts.push_back(message);
  }
  void close() override {}
  bool requiresLayout() const override { return false; }
};

// Listens to the logger, at one level, for the length of a scope.
class Listening {
 public:
  explicit Listening(const log4cxx::LevelPtr& level) : before_(logger_->getLevel()) {
    logger_->setLevel(level);
    logger_->addAppender(messages_);
  }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;
  ~Listening() {
    logger_->removeAppender(messages_);
    logger_->setLevel(before_);
  }

  const std::vector<std::string>& Texts() const { return messages_->texts; }
  // The messages up to the first digit of a time.
  std::vector<std::string> WithoutTimes() const {
    std::vector<std::string> texts = Texts();
    for (std::string& text : texts)
      if (const auto at = text.find("time =\t"); at != std::string::npos) text.resize(at + 7);
    return texts;
  }

 private:
  log4cxx::LoggerPtr logger_ = log4cxx::Logger::getLogger("tbb");
  log4cxx::LevelPtr before_;
  std::shared_ptr<Messages> messages_ = std::make_shared<Messages>();
};

using Texts = std::vector<std::string>;

}  // namespace

TEST(PeakDetectLog, TellsTimesAndNumberAtInfoLevel) {
  const Listening listening(log4cxx::Level::getInfo());
  TestCurve curve = PeakCurve("0 4 9 4 0 0 2 5 2 0");
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(listening.WithoutTimes(),
            (Texts{"Find Features Sequential\tElapsed time =\t", "\tNumber of features found=\t2",
                   "Describe Peaks\tElapsed time =\t", "Select Peaks\tElapsed time =\t"}));
}

TEST(PeakDetectLog, NamesTheSortedRoute) {
  const Listening listening(log4cxx::Level::getInfo());
  TestCurve curve = PeakCurve("0 4 9 4 0");
  curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(listening.WithoutTimes().front(), "Find Features Sorted\tElapsed time =\t");
}

TEST(PeakDetectLog, TimesAreSeconds) {
  const Listening listening(log4cxx::Level::getInfo());
  TestCurve curve = PeakCurve("0 4 9 4 0");
  ASSERT_TRUE(Detect(curve).ok);
  const std::string& text = listening.Texts().front();
  const double seconds = std::stod(text.substr(text.rfind('\t') + 1));
  EXPECT_GE(seconds, 0.0);
  EXPECT_LT(seconds, 60.0);
}

TEST(PeakDetectLog, DescribesNothingWhereNothingIsFound) {
  const Listening listening(log4cxx::Level::getInfo());
  TestCurve curve = PeakCurve("0 0 0 0");
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(listening.WithoutTimes(),
            (Texts{"Find Features Sequential\tElapsed time =\t", "\tNumber of features found=\t0"}));
}

TEST(PeakDetectLog, DumpsEachFeatureAtDebugLevel) {
  const Listening listening(log4cxx::Level::getDebug());
  TestCurve curve = CurveOf("0 4 9 4 0.5", "100 101.5 103 104.5 106");
  curve.baseline.assign(5, 0.0);
  curve.noise.assign(5, 1.0);
  curve.AddStatus(Curve::STATUS_BASELINE);
  curve.AddStatus(Curve::STATUS_NOISE);
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(std::ranges::count(listening.Texts(), "Feature 0 2 4 (100 103 106 0 9 0.5)"), 1);
}

TEST(PeakDetectLog, CountsFeaturesThatFailTheLimitsToo) {
  TestCurve curve = PeakCurve("0 1 0 0 200 0 0 1 0");
  curve.peakDetectParams.SNInUse = true;
  const Listening listening(log4cxx::Level::getDebug());
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(Spans(curve.peaks), "3-4-5");
  EXPECT_EQ(std::ranges::count_if(listening.Texts(),
                                  [](const std::string& text) { return text.starts_with("Feature "); }),
            3);
}

TEST(PeakDetectLog, TellsOfPartialOverlapsAtDebugLevel) {
  const Listening listening(log4cxx::Level::getDebug());
  TestCurve curve = PeakCurve("0 30 40 30 9 2 4 2 12 20 12 0");
  curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(std::ranges::count(listening.Texts(), "PartialOverlap 5 7"), 1);
}

// A root logger that nobody has set up lets everything through, and log4cxx complains on
// standard error about the first message.
TEST(PeakDetectLog, SaysNothingToAHostThatHasNoLogging) {
  ASSERT_TRUE(log4cxx::Logger::getRootLogger()->getAllAppenders().empty());
  ASSERT_TRUE(log4cxx::Logger::getLogger("tbb")->isDebugEnabled());
  testing::internal::CaptureStderr();
  TestCurve curve = PeakCurve("0 5 9 5 0");
  EXPECT_TRUE(Detect(curve).ok);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PeakDetectLog, SaysNothingAtWarnLevel) {
  const Listening listening(log4cxx::Level::getWarn());
  TestCurve curve = PeakCurve("0 4 9 4 0");
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(listening.Texts(), Texts{});
}
