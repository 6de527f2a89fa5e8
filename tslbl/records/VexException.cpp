#include <tslbl/records/VexException.h>

#include <utility>

namespace TslBL {

VexException::VexException(std::wstring message)
    : std::runtime_error("Vex Exception with wide string. "), message_(std::move(message)) {}

const char* VexException::what() const noexcept {
  static std::string text;
  try {
    text = std::runtime_error::what();
    for (const wchar_t c : message_) text.push_back(static_cast<char>(c));
    return text.c_str();
  } catch (...) {
    return std::runtime_error::what();
  }
}

}  // namespace TslBL
