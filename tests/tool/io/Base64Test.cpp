#include <gtest/gtest.h>
#include <tool/io/Base64.h>
#include <tool/io/MzMLMaker.h>

#include <stdexcept>
#include <string>

namespace tests {
namespace {

std::string ErrorOf(const std::string& text) {
  try {
    TslTool::FromBase64(text);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

// RFC 4648, 10.
TEST(Base64, GivesTheBytesOfThePublishedExamples) {
  const std::string whole = "foobar";
  const char* texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
  for (std::size_t n = 0; n <= whole.size(); ++n)
    EXPECT_EQ(TslTool::FromBase64(texts[n]), whole.substr(0, n));
}

TEST(Base64, IsWrittenAsInThePublishedExamples) {
  const std::string whole = "foobar";
  const char* texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
  for (std::size_t n = 0; n <= whole.size(); ++n) EXPECT_EQ(TslTool::ToBase64(whole.substr(0, n)), texts[n]);
}

TEST(Base64, GivesEveryByteBack) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    EXPECT_EQ(TslTool::FromBase64(Base64(bytes.substr(n))), bytes.substr(n));
    EXPECT_EQ(TslTool::ToBase64(bytes.substr(n)), Base64(bytes.substr(n)));
  }
}

TEST(Base64, BlanksBetweenTheLettersMeanNothing) {
  EXPECT_EQ(TslTool::FromBase64(" Zm9v\r\n\tY g = =\n"), "foob");
}

TEST(Base64, SaysWhatIsWrong) {
  const struct {
    const char *text, *error;
  } table[] = {{"Zm9!", "is damaged (character code 33)"},     {"Zm9\xff", "is damaged (character code 255)"},
               {"Zm9vY", "has a wrong length (5 characters)"}, {"Zg==Zm9v", "continues after its padding"},
               {"Z===", "continues after its padding"},        {"====", "continues after its padding"}};
  for (const auto& [text, error] : table) EXPECT_EQ(ErrorOf(text), error) << text;
}

}  // namespace
}  // namespace tests
