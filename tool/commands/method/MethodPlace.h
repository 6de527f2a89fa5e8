#pragma once
// Places in a method as a user types them: "P0" is a time period, "P0/1" an item of its sequence, "P0/1/2" a
// run of the item. All count from 0, as the messages of the rules do.

#include <tslbl/method/Method.h>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TslTool {

struct MethodPlace {
  std::uint32_t period = 0;
  std::optional<std::uint32_t> item = {};
  std::optional<std::uint32_t> run = {};
};

// Whether a text may be meant as a place.
bool IsMethodPlace(std::string_view text);

// Throws UsageError for a text that is no place, and for a place that the method has not, with what it has.
MethodPlace ParseMethodPlace(const TslBL::Method& method, std::string_view text);

std::string PlaceName(std::size_t period);
std::string PlaceName(std::size_t period, std::size_t item);
// That of an item alone for the first run of it.
std::string PlaceName(std::size_t period, std::size_t item, std::size_t run);

}  // namespace TslTool
