#pragma once
// The options of a command, declared once: reading the command line, the help, the manual page and the
// completions of shells all go by this list.

#include <tool/frame/UsageError.h>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// One option as it was declared.
struct Option {
  // Repeated: one value each time that it is given.
  enum class Takes { Nothing, OneValue, Values, Repeated };

  std::vector<std::string> names;  // "-o" and "--output"; one without dashes is a positional argument
  std::string valueName;           // what stands for the value in the help; may be empty
  std::string help;
  std::vector<std::string> choices;  // all that the value may be; empty: anything
  Takes takes = Takes::OneValue;
  // Receives the texts from the command line; throws UsageError if they are wrong.
  std::function<void(const std::vector<std::string>& texts)> take;
  bool given = false;

  bool IsPositional() const { return names.front().front() != '-'; }
};

// Names are as typed, such as "--scan" or "-o,--output"; a name without dashes is a positional argument.
// Behind a blank may follow what stands for the value in the help, as in "--scan N|A-B"; shells complete a
// value that is called FILE, RUN or INPUT with the names of files. `value` must outlive the parsing and is
// left alone if the option is not given. An empty value, which is mostly a shell variable that was never set,
// is wrong usage; so is a text that is no number, or not a finite one.
class Options {
 public:
  void Flag(const std::string& names, bool& value, const std::string& help);
  void Value(const std::string& names, std::string& value, const std::string& help);
  // One value or more, up to the end of the line.
  void Values(const std::string& names, std::vector<std::string>& values, const std::string& help);
  // One value each time; the option may be given several times.
  void Repeated(const std::string& names, std::vector<std::string>& values, const std::string& help);
  void Value(const std::string& names, std::optional<double>& value, const std::string& help);
  void Value(const std::string& names, std::optional<std::uint32_t>& value, const std::string& help);
  void Value(const std::string& names, std::optional<std::uint64_t>& value, const std::string& help);
  // The help ends with the choices and, unless it is empty, what `value` is without the option.
  // Letters count without their case; `value` is one of the choices as it stands there.
  void Choice(const std::string& names, std::string& value, const std::vector<std::string>& choices,
              const std::string& help);

  // Whether an option was given at all.
  bool Given(const std::string& name) const;
  const std::vector<Option>& List() const { return list_; }
  // The parser notes here what was given.
  std::vector<Option>& List() { return list_; }

 private:
  Option& Add(const std::string& names, const std::string& help);
  template <class T, class Parse>
  void AddValue(const std::string& names, T& value, const std::string& help, Parse parse);

  std::vector<Option> list_;
};

}  // namespace TslTool
