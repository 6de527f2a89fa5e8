#pragma once
// Switches as a user gives them: names and their values.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <tool/frame/Options.h>

namespace tests {

using GivenOptions = std::vector<std::pair<std::string, std::vector<std::string>>>;

// Hands to what `switches` declares the values given for it.
template <class Switches>
void Give(Switches& switches, const GivenOptions& given) {
  TslTool::Options options;
  switches.Declare(options);
  for (const auto& [name, values] : given)
    for (TslTool::Option& option : options.List())
      if (std::ranges::count(option.names, name) > 0) option.take(values);
}

}  // namespace tests
