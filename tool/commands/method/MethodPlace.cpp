#include <tool/commands/method/MethodPlace.h>

#include <fmt/format.h>

#include <tool/frame/UsageError.h>
#include <cctype>
#include <charconv>
#include <vector>

namespace TslTool {
namespace {

// The numbers of "P0/1/2"; nothing of another text.
std::optional<std::vector<std::uint32_t>> NumbersOf(std::string_view text) {
  if (!IsMethodPlace(text)) return {};
  std::vector<std::uint32_t> numbers;
  const char* at = text.data() + 1;
  const char* const end = text.data() + text.size();
  while (numbers.size() < 3) {
    const auto [rest, error] = std::from_chars(at, end, numbers.emplace_back());
    if (error != std::errc()) return {};
    if (rest == end) return numbers;
    if (*rest != '/') return {};
    at = rest + 1;
  }
  return {};
}

void RequireIndex(std::string_view text, std::uint32_t index, std::size_t count, const char* what,
                  const std::string& where) {
  if (index < count) return;
  const std::string all = count == 0   ? fmt::format("no {}", what)
                          : count == 1 ? fmt::format("one {}, number 0", what)
                                       : fmt::format("{} {}s, from 0 to {}", count, what, count - 1);
  throw UsageError(fmt::format("{}: {} has {}", text, where, all));
}

}  // namespace

bool IsMethodPlace(std::string_view text) {
  return text.size() > 1 && (text[0] == 'P' || text[0] == 'p') &&
         std::isdigit(static_cast<unsigned char>(text[1])) != 0;
}

MethodPlace ParseMethodPlace(const TslBL::Method& method, std::string_view text) {
  const auto numbers = NumbersOf(text);
  if (!numbers) throw UsageError(fmt::format("\"{}\" is no place such as P0, P0/1 or P0/1/0", text));
  MethodPlace place{numbers->front()};
  RequireIndex(text, place.period, method.TimePeriods.size(), "time period", "the method");
  if (numbers->size() == 1) return place;
  const auto& sequence = method.TimePeriods[place.period].Sequence;
  place.item = numbers->at(1);
  RequireIndex(text, *place.item, sequence.size(), "item", PlaceName(place.period));
  if (numbers->size() == 2) return place;
  place.run = numbers->at(2);
  RequireIndex(text, *place.run, sequence[*place.item].size(), "run", PlaceName(place.period, *place.item));
  return place;
}

std::string PlaceName(std::size_t period) { return fmt::format("P{}", period); }
std::string PlaceName(std::size_t period, std::size_t item) { return fmt::format("P{}/{}", period, item); }
std::string PlaceName(std::size_t period, std::size_t item, std::size_t run) {
  return run == 0 ? PlaceName(period, item) : fmt::format("P{}/{}/{}", period, item, run);
}

}  // namespace TslTool
