#include <tool/io/Base64.h>

#include <array>
#include <cstdint>
#include <stdexcept>

namespace TslTool {

namespace {

constexpr std::uint8_t kPadding = 64, kBlank = 65, kForeign = 66;

constexpr std::array<std::uint8_t, 256> Meanings() {
  std::array<std::uint8_t, 256> meanings{};
  meanings.fill(kForeign);
  std::uint8_t value = 0;
  for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
    meanings[static_cast<unsigned char>(c)] = value++;
  for (const char c : std::string_view(" \t\r\n")) meanings[static_cast<unsigned char>(c)] = kBlank;
  meanings['='] = kPadding;
  return meanings;
}

[[noreturn]] void FailAt(char c) {
  throw std::runtime_error("is damaged (character code " + std::to_string(static_cast<unsigned char>(c)) +
                           ")");
}

}  // namespace

std::string FromBase64(std::string_view text) {
  static constexpr std::array<std::uint8_t, 256> kMeanings = Meanings();
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t group = 0;
  std::size_t letters = 0, padding = 0;
  for (const char c : text) {
    const std::uint8_t meaning = kMeanings[static_cast<unsigned char>(c)];
    if (meaning == kBlank) continue;
    if (meaning == kForeign) FailAt(c);
    if (meaning < kPadding && padding > 0) throw std::runtime_error("continues after its padding");
    if (meaning == kPadding) ++padding;
    group = group << 6 | (meaning & 63U);
    if (++letters % 4 != 0) continue;
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(group >> shift & 0xffU);
  }
  if (letters % 4 != 0)
    throw std::runtime_error("has a wrong length (" + std::to_string(letters) + " characters)");
  if (padding > 2) throw std::runtime_error("continues after its padding");
  bytes.resize(bytes.size() - padding);
  return bytes;
}

}  // namespace TslTool
