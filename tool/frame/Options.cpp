#include <tool/frame/Options.h>

#include <fmt/ranges.h>

#include <tool/frame/Numbers.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <sstream>

namespace TslTool {
namespace {

std::vector<std::string> SplitCommas(const std::string& names) {
  std::vector<std::string> all;
  std::istringstream in(names);
  for (std::string name; std::getline(in, name, ',');) all.push_back(name);
  return all;
}

}  // namespace

Option& Options::Add(const std::string& names, const std::string& help) {
  const std::size_t blank = names.find(' ');
  Option& option = list_.emplace_back();
  option.names = SplitCommas(names.substr(0, blank));
  if (blank != std::string::npos) option.valueName = names.substr(blank + 1);
  option.help = help;
  return option;
}

template <class T, class Parse>
void Options::AddValue(const std::string& names, T& value, const std::string& help, Parse parse) {
  Option& option = Add(names, help);
  option.take = [&value, name = option.names.back(), parse](const std::vector<std::string>& texts) {
    if (texts.front().empty()) throw UsageError(name + ": the value is empty");
    value = parse(name, texts.front());
  };
}

void Options::Flag(const std::string& names, bool& value, const std::string& help) {
  Option& option = Add(names, help);
  option.takes = Option::Takes::Nothing;
  option.take = [&value](const std::vector<std::string>&) { value = true; };
}

void Options::Value(const std::string& names, std::string& value, const std::string& help) {
  AddValue(names, value, help, [](const std::string&, const std::string& text) { return text; });
}

void Options::Values(const std::string& names, std::vector<std::string>& values, const std::string& help) {
  Option& option = Add(names, help);
  option.takes = Option::Takes::Values;
  option.take = [&values, name = option.names.back()](const std::vector<std::string>& texts) {
    if (std::ranges::find(texts, "") != texts.end()) throw UsageError(name + ": the value is empty");
    values = texts;
  };
}

void Options::Repeated(const std::string& names, std::vector<std::string>& values, const std::string& help) {
  Values(names, values, help);
  list_.back().takes = Option::Takes::Repeated;
}

void Options::Value(const std::string& names, std::optional<double>& value, const std::string& help) {
  AddValue(names, value, help, ParseReal);
}

void Options::Value(const std::string& names, std::optional<std::uint32_t>& value, const std::string& help) {
  AddValue(names, value, help, ParseCount);
}

void Options::Value(const std::string& names, std::optional<std::uint64_t>& value, const std::string& help) {
  AddValue(names, value, help, ParseLongCount);
}

void Options::Choice(const std::string& names, std::string& value, const std::vector<std::string>& choices,
                     const std::string& help) {
  const std::string all = fmt::format("{}", fmt::join(choices, ", "));
  const auto parse = [choices, all](const std::string& name, const std::string& text) {
    const auto found = std::ranges::find_if(choices, [&](const std::string& choice) {
      return TslCommon::EqualsIgnoreCase(TslCommon::FromUtf8(choice), TslCommon::FromUtf8(text));
    });
    if (found != choices.end()) return *found;
    throw UsageError(name + ": \"" + text + "\" is not one of " + all);
  };
  AddValue(names, value, help + ": " + all + (value.empty() ? "" : " [" + value + "]"), parse);
  list_.back().choices = choices;
}

bool Options::Given(const std::string& name) const {
  return std::ranges::any_of(list_, [&](const Option& option) {
    return option.given && std::ranges::find(option.names, name) != option.names.end();
  });
}

}  // namespace TslTool
