#include <gtest/gtest.h>
#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/Sha1.h>

#include <string>

namespace tests {
namespace {

std::string SumOf(const std::string& bytes, std::size_t piece) {
  TslTool::Sha1 sum;
  for (std::size_t at = 0; at < bytes.size(); at += piece) sum.Add(std::string_view(bytes).substr(at, piece));
  return sum.Text();
}

// Of the examples that NIST publishes for FIPS 180-4, and of RFC 3174.
const struct {
  std::string bytes;
  const char* sum;
} kExamples[] = {
    {"", "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
    {"abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
    {std::string(1000000, 'a'), "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
};

TEST(Sha1, GivesThePublishedSums) {
  for (const auto& example : kExamples) EXPECT_EQ(SumOf(example.bytes, 1U << 20), example.sum);
}

TEST(Sha1, DoesNotDependOnThePieces) {
  for (const auto& example : kExamples)
    for (const std::size_t piece : {1U, 63U, 64U, 65U, 1000U})
      EXPECT_EQ(SumOf(example.bytes, piece), example.sum) << piece;
}

TEST(Sha1, OfAFileIsThatOfItsBytes) {
  for (const auto& example : kExamples)
    EXPECT_EQ(TslTool::Sha1OfFile(TempFile("a", example.bytes).Path()), example.sum);
}

TEST(Sha1, OfAFileThatIsGoneIsAnError) {
  EXPECT_THROW(TslTool::Sha1OfFile("/no/such/file"), TslTool::InputError);
}

}  // namespace
}  // namespace tests
