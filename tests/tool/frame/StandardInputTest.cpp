#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include <tool/TempFile.h>
#include <tool/frame/StandardInput.h>

namespace tests {
namespace {

using TslTool::OffersData;
using TslTool::WasReadInPart;

// An open file that closes with its test.
struct Opened {
  explicit Opened(const std::string& path) : descriptor(open(path.c_str(), O_RDWR | O_NOCTTY)) {}
  ~Opened() { close(descriptor); }
  int descriptor;
};

struct Pipe {
  Pipe() { EXPECT_EQ(pipe(ends), 0); }
  ~Pipe() {
    close(ends[0]);
    CloseWriter();
  }
  void CloseWriter() {
    if (ends[1] >= 0) close(ends[1]);
    ends[1] = -1;
  }
  int ends[2] = {};
};

TEST(StandardInput, AFileOffersWhatItHolds) {
  const TempFile full("a.txt", "100 1\n"), empty("b.txt", "");
  EXPECT_TRUE(OffersData(Opened(full.Path()).descriptor));
  EXPECT_FALSE(OffersData(Opened(empty.Path()).descriptor));
}

TEST(StandardInput, ADeviceATerminalAndWhatIsNotOpenOfferNothing) {
  EXPECT_FALSE(OffersData(Opened("/dev/null").descriptor));
  EXPECT_FALSE(OffersData(Opened("/dev/ptmx").descriptor));
  EXPECT_FALSE(OffersData(-1));
}

TEST(StandardInput, APipeOffersUntilItIsClosedEmpty) {
  Pipe pipe;
  EXPECT_TRUE(OffersData(pipe.ends[0]));
  ASSERT_EQ(write(pipe.ends[1], "1", 1), 1);
  pipe.CloseWriter();
  EXPECT_TRUE(OffersData(pipe.ends[0]));
  char byte;
  ASSERT_EQ(read(pipe.ends[0], &byte, 1), 1);
  EXPECT_FALSE(OffersData(pipe.ends[0]));
}

TEST(StandardInput, AFileThatIsNotAtItsBeginningWasReadInPart) {
  const TempFile file("a.txt", "100 1\n");
  const Opened opened(file.Path());
  EXPECT_FALSE(WasReadInPart(opened.descriptor));
  char byte;
  ASSERT_EQ(read(opened.descriptor, &byte, 1), 1);
  EXPECT_TRUE(WasReadInPart(opened.descriptor));
  EXPECT_FALSE(WasReadInPart(Pipe().ends[0]));
}

}  // namespace
}  // namespace tests
