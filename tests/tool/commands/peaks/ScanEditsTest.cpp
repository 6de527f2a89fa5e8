// Tests: ScanEdits.h.
#include <tool/commands/peaks/ScanEdits.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Edits = TslTool::ScanEdits<int>;

TEST(ScanEdits, AreThoseOfTheScan) {
  Edits edits("in", {{3, {1, 2}}, {7, {4}}}, {}, "--do");
  EXPECT_THAT(edits.Of(3), ElementsAre(1, 2));
  EXPECT_THAT(edits.Of(5), IsEmpty());
  EXPECT_THAT(edits.Unused(), ElementsAre("scan 7 has edits and was not evaluated"));
}

TEST(ScanEdits, OfAContinuedTableMayHaveBeenMadeBefore) {
  const Edits edits("in", {{3, {1}}}, {}, "--do", true);
  EXPECT_THAT(
      edits.Unused(),
      ElementsAre("scan 3 has edits and was not evaluated; rows that the table had of it are as they were"));
}

TEST(ScanEdits, OfOneSpectrumAreForNoSecond) {
  Edits edits("in", {}, {9}, "--do and --undo");
  EXPECT_THAT(edits.Of(12), ElementsAre(9));
  try {
    edits.Of(13);
    FAIL();
  } catch (const TslTool::InputError& e) {
    EXPECT_STREQ(e.what(),
                 "in: --do and --undo edit one spectrum, and there are several; choose one with --scan, or "
                 "list the edits of each in a file for --edits");
  }
}

TEST(ScanEditsThreads, AskForTheirScansAtOnce) {
  Edits::ByScan byScan;
  for (std::uint32_t scan = 0; scan < 200; ++scan) byScan[scan] = {static_cast<int>(scan)};
  Edits edits("in", byScan, {}, "--do");
  std::vector<std::thread> threads;
  for (std::uint32_t first = 0; first < 4; ++first)
    threads.emplace_back([&edits, first] {
      for (std::uint32_t scan = first; scan < 200; scan += 4)
        EXPECT_THAT(edits.Of(scan), ElementsAre(static_cast<int>(scan)));
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(edits.Unused(), IsEmpty());
}

}  // namespace
}  // namespace tests
