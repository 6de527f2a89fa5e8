#include <tool/frame/Warning.h>

#include <fmt/format.h>

#include <tool/frame/Visible.h>
#include <iostream>

namespace TslTool {

void Warn(const std::string& text) { Tell("warning: " + text); }

void Tell(const std::string& text) { std::cerr << "tslbl: " << Visible(text) << std::endl; }

void Warn(const std::string& file, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) Warn(fmt::format("{}: {}", file, text));
}

void Tell(const std::string& file, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) Tell(fmt::format("{}: {}", file, text));
}

}  // namespace TslTool
