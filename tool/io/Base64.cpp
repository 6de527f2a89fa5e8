#include <tool/io/Base64.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace TslTool {

namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kPadding = 64, kBlank = 65, kForeign = 66;

constexpr std::array<std::uint8_t, 256> Meanings() {
  std::array<std::uint8_t, 256> meanings{};
  meanings.fill(kForeign);
  std::uint8_t value = 0;
  for (const char c : kLetters) meanings[static_cast<unsigned char>(c)] = value++;
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

std::string ToBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i)
      group = group << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    for (std::size_t i = 0; i < 4; ++i)
      text += i > bytes.size() ? '=' : kLetters[group >> (18 - 6 * i) & 63U];
  }
  return text;
}

}  // namespace TslTool
