#include <tool/frame/CommandLine.h>

#include <fmt/ranges.h>

#include <CLI/CLI.hpp>

#include <tool/frame/Interrupt.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Output.h>
#include <tslbl/Version.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <algorithm>
#include <iostream>
#include <utility>

namespace TslTool {
namespace {

class CliOptions final : public Options {
 public:
  explicit CliOptions(CLI::App& app) : app_(app) {}

  void Flag(const std::string& names, bool& value, const std::string& help) override {
    app_.add_flag(names, value, help);
  }
  void Value(const std::string& names, std::string& value, const std::string& help) override {
    Add(names, value, help, [](const std::string&, const std::string& text) { return text; });
  }
  void Values(const std::string& names, std::vector<std::string>& values, const std::string& help) override {
    const std::size_t blank = names.find(' ');
    const std::string typed = names.substr(0, blank);
    const auto take = [&values, typed](const std::vector<std::string>& texts) {
      if (std::ranges::find(texts, "") != texts.end()) throw UsageError(typed + ": the value is empty");
      values = texts;
    };
    const std::string shown = blank == std::string::npos ? "" : names.substr(blank + 1);
    app_.add_option_function<std::vector<std::string>>(typed, take, help)->type_name(shown);
  }
  void Value(const std::string& names, std::optional<double>& value, const std::string& help) override {
    Add(names, value, help, ParseReal);
  }
  void Value(const std::string& names, std::optional<std::uint32_t>& value,
             const std::string& help) override {
    Add(names, value, help, ParseCount);
  }
  void Value(const std::string& names, std::optional<std::uint64_t>& value,
             const std::string& help) override {
    Add(names, value, help, ParseLongCount);
  }
  void Choice(const std::string& names, std::string& value, const std::vector<std::string>& choices,
              const std::string& help) override {
    const std::string all = fmt::format("{}", fmt::join(choices, ", "));
    const auto parse = [choices, all](const std::string& option, const std::string& text) {
      if (std::ranges::find(choices, text) != choices.end()) return text;
      throw UsageError(option + ": \"" + text + "\" is not one of " + all);
    };
    Add(names, value, help + ": " + all + " [" + value + "]", parse);
  }
  bool Given(const std::string& name) const override { return app_.count(name) > 0; }

 private:
  template <class T, class Parse>
  void Add(const std::string& names, T& value, const std::string& help, Parse parse) {
    const std::size_t blank = names.find(' ');
    const std::string typed = names.substr(0, blank);
    const std::string option = typed.substr(typed.rfind(',') + 1);
    const auto take = [&value, option, parse](const std::string& text) {
      if (text.empty()) throw UsageError(option + ": the value is empty");
      value = parse(option, text);
    };
    const std::string shown = blank == std::string::npos ? "" : names.substr(blank + 1);
    app_.add_option_function<std::string>(typed, take, help)->type_name(shown);
  }

  CLI::App& app_;
};

int Fail(const std::string& message, int status) {
  std::cerr << "tslbl: " << message << '\n';
  return status;
}

// Runs what the user asked for; every way of failing ends here.
int Guarded(const std::function<int()>& run) {
  try {
    return run();
  } catch (const UsageError& e) {
    return Fail(e.what(), kWrongUsage);
  } catch (const ReaderGone&) {
    return kFailed;  // whoever closed the pipe has seen enough
  } catch (const std::bad_alloc&) {
    return Fail("out of memory", kFailed);
  } catch (const std::exception& e) {
    // A signal may also show as a read or a write that failed.
    return Fail(WasInterrupted() ? "interrupted" : e.what(), kFailed);
  } catch (const TslCommon::ComError& e) {
    return Fail("a component failed with code " + std::to_string(e.code), kFailed);
  }
}

// As the user typed it, from the program's name on.
std::string NameOf(const CLI::App& app) {
  const auto named = app.get_subcommands();
  return app.get_name() + (named.empty() ? "" : " " + NameOf(*named.front()));
}

int WrongUsage(const std::string& message, const CLI::App& app) {
  return Fail(message + "\nRun '" + NameOf(app) + " --help' for more information.", kWrongUsage);
}

// The help or the version, which are results: a write that fails is a failure.
int Tell(const CLI::App& app, const CLI::Success& success) {
  app.exit(success);
  return std::cout.flush() ? kDone : Fail("standard output cannot be written", kFailed);
}

// Commands beside what the parser knows of them.
struct Declared {
  CLI::App* app;
  const Command* command;
  std::unique_ptr<CliOptions> options;
  std::vector<Declared> family;
};

std::vector<Declared> Declare(CLI::App& app, const std::vector<Command>& commands) {
  std::vector<Declared> all;
  for (const Command& command : commands) {
    CLI::App* sub = app.add_subcommand(command.name, command.summary);
    sub->footer(command.examples);
    Declared& declared = all.emplace_back(Declared{sub, &command, std::make_unique<CliOptions>(*sub), {}});
    if (command.family.empty()) {
      command.declare(*declared.options);
    } else {
      sub->require_subcommand(0, 1);
      declared.family = Declare(*sub, command.family);
    }
  }
  return all;
}

// The command that was named, or null.
const Declared* NamedOf(const std::vector<Declared>& all) {
  for (const Declared& declared : all) {
    if (!declared.app->parsed()) continue;
    return declared.family.empty() ? &declared : NamedOf(declared.family);
  }
  return nullptr;
}

int ParseAndRun(int argc, char** argv, const std::vector<Command>& commands) {
  CLI::App app("Evaluates spectra of a single-quadrupole mass spectrometer.", "tslbl");
  app.set_version_flag("--version", "tslbl " TSLBL_VERSION);
  app.require_subcommand(0, 1);
  app.footer("'tslbl COMMAND --help' tells all about a command.");
  const std::vector<Declared> all = Declare(app, commands);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {
    return Tell(app, e);
  } catch (const CLI::ParseError& e) {
    return WrongUsage(e.what(), app);
  } catch (const UsageError& e) {
    return WrongUsage(e.what(), app);
  }
  const Declared* named = NamedOf(all);
  if (named == nullptr) return WrongUsage("a command is required", app);
  return named->command->run(*named->options);
}

}  // namespace

int RunCommandLine(int argc, char** argv, std::vector<Command> commands) {
  return Guarded([&] { return ParseAndRun(argc, argv, commands); });
}

}  // namespace TslTool
