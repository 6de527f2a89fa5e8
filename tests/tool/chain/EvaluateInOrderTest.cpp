#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <tool/chain/EvaluateInOrder.h>
#include <tslbl/detect/ThreadingParams.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using TslTool::LoadedSpectrum;
using TslTool::SpectrumTexts;

// Scans 1 to `count`, of which some cannot be read or loaded.
class Scans final : public TslTool::SpectrumSource {
 public:
  explicit Scans(std::uint32_t count) : count_(count) {}
  std::uint32_t unreadable = 0;
  std::uint32_t broken = 0;

  std::function<LoadedSpectrum()> Next() override {
    if (next_ > count_) return {};
    const std::uint32_t scan = next_++;
    if (scan == unreadable) throw std::runtime_error("unreadable");
    return [this, scan] {
      if (scan == broken) throw std::runtime_error("broken");
      return LoadedSpectrum{scan, 0.0, nullptr};
    };
  }
  std::optional<std::uint64_t> Count() const override { return count_; }
  std::string Format() const override { return "test"; }

 private:
  std::uint32_t count_;
  std::uint32_t next_ = 1;
};

class EvaluateInOrder : public testing::TestWithParam<std::uint32_t> {
 public:
  EvaluateInOrder() {
    TslBL::AppThreadingParams params = before_;
    params.Auto = false;
    params.ThreadPoolSize = GetParam();
    TslBL::SetMultiThreadingParams(params);
  }
  ~EvaluateInOrder() override { TslBL::SetMultiThreadingParams(before_); }

  // The scans written, in the order in which they came.
  std::vector<std::string> Written(Scans scans) {
    std::vector<std::string> written;
    const auto evaluate = [](LoadedSpectrum& loaded) {
      // The earlier of two scans takes longer.
      std::this_thread::sleep_for(std::chrono::microseconds(loaded.scan % 2 * 500));
      return SpectrumTexts{std::to_string(loaded.scan), ""};
    };
    const auto write = [&](const SpectrumTexts& texts) { written.push_back(texts.peaks); };
    try {
      count_ = TslTool::EvaluateInOrder(scans, evaluate, write);
    } catch (const std::runtime_error& e) {
      written.emplace_back(e.what());
    }
    return written;
  }
  std::uint64_t count_ = 0;

 private:
  const TslBL::AppThreadingParams before_ = TslBL::GetMultiThreadingParams();
};

TEST_P(EvaluateInOrder, HandsOnAllInTheirOrder) {
  const auto written = Written(Scans(200));
  ASSERT_THAT(written, SizeIs(200));
  for (std::size_t i = 0; i < written.size(); ++i) EXPECT_EQ(written[i], std::to_string(i + 1));
  EXPECT_EQ(count_, 200U);
}

TEST_P(EvaluateInOrder, AnEmptySourceIsNoSpectrum) {
  EXPECT_THAT(Written(Scans(0)), SizeIs(0));
  EXPECT_EQ(count_, 0U);
}

TEST_P(EvaluateInOrder, WritesAllThatComesBeforeAFailure) {
  Scans broken(50);
  broken.broken = 4;
  EXPECT_THAT(Written(broken), ElementsAre("1", "2", "3", "broken"));
  Scans unreadable(50);
  unreadable.unreadable = 3;
  EXPECT_THAT(Written(unreadable), ElementsAre("1", "2", "unreadable"));
}

TEST_P(EvaluateInOrder, TellsTheFirstFailureInTheOrderOfTheSource) {
  Scans scans(50);
  scans.broken = 3;
  scans.unreadable = 4;
  EXPECT_THAT(Written(scans), ElementsAre("1", "2", "broken"));
}

TEST_P(EvaluateInOrder, EndsWhereWritingFails) {
  Scans scans(50);
  const auto write = [](const SpectrumTexts& texts) {
    if (texts.peaks == "7") throw std::runtime_error("full");
  };
  const auto evaluate = [](LoadedSpectrum& loaded) { return SpectrumTexts{std::to_string(loaded.scan), ""}; };
  EXPECT_THROW(TslTool::EvaluateInOrder(scans, evaluate, write), std::runtime_error);
}

TEST_P(EvaluateInOrder, HoldsTwoSpectraAThreadAtMost) {
  std::atomic<int> inWork = 0;
  std::atomic<int> most = 0;
  const auto evaluate = [&](LoadedSpectrum& loaded) {
    const int now = ++inWork;
    for (int seen = most; now > seen && !most.compare_exchange_weak(seen, now);) continue;
    // Behind the first nothing can be written, so that all others wait.
    if (loaded.scan == 1) std::this_thread::sleep_for(std::chrono::milliseconds(30));
    return SpectrumTexts{};
  };
  Scans scans(100);
  TslTool::EvaluateInOrder(scans, evaluate, [&](const SpectrumTexts&) { --inWork; });
  EXPECT_LE(most, static_cast<int>(2 * GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Threads, EvaluateInOrder, testing::Values(1U, 2U, 8U));

}  // namespace
}  // namespace tests
