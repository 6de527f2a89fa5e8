#include <tool/frame/Warning.h>

#include <iostream>

namespace TslTool {

void Warn(const std::string& text) { std::cerr << "tslbl: warning: " << text << std::endl; }

}  // namespace TslTool
