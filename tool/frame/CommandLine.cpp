#include <tool/frame/CommandLine.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>

#include <tool/frame/Failure.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Suggestion.h>
#include <tool/frame/Warning.h>
#include <tslbl/Version.h>
#include <algorithm>
#include <iostream>

namespace TslTool {
namespace {

int Fail(const std::string& message, int status) {
  Tell(message);
  return status;
}

// Runs what the user asked for; every way of failing ends here.
int Guarded(const std::function<int()>& run) {
  try {
    return run();
  } catch (const UsageError& e) {
    return Fail(e.what(), kWrongUsage);
  } catch (const ReaderGone&) {
    return kFailed;  // nobody reads standard output any more, as behind `| head`: no error to report
  } catch (...) {
    // A signal may also show as a read or a write that failed.
    return Fail(WasInterrupted() ? "interrupted" : FailureText(std::current_exception()), kFailed);
  }
}

// As the user typed it, from the program's name on.
std::string NameOf(const CLI::App& app) {
  const auto named = app.get_subcommands();
  return app.get_name() + (named.empty() ? "" : " " + NameOf(*named.front()));
}

int WrongUsage(const std::string& message, const CLI::App& app) {
  Tell(message);
  std::cerr << "Run '" + NameOf(app) + " --help' for more information.\n";
  return kWrongUsage;
}

// The help or the version, which are results: a write that fails is a failure.
int Print(const CLI::App& app, const CLI::Success& success) {
  app.exit(success);
  return std::cout.flush() ? kDone : Fail("standard output cannot be written", kFailed);
}

std::string Joined(const std::vector<std::string>& names) { return fmt::format("{}", fmt::join(names, ",")); }

// `option` must outlive the parsing.
void AddTo(CLI::App& app, Option& option) {
  const auto take = [&option](const std::vector<std::string>& texts) {
    option.given = true;
    option.take(texts);
  };
  const std::string names = Joined(option.names);
  if (option.takes == Option::Takes::Nothing) {
    app.add_flag_callback(
        names, [take] { take({}); }, option.help);
  } else if (option.takes == Option::Takes::OneValue) {
    app.add_option_function<std::string>(
           names, [take](const std::string& text) { take({text}); }, option.help)
        ->type_name(option.valueName);
  } else {
    app.add_option_function<std::vector<std::string>>(names, take, option.help)
        ->type_name(option.valueName)
        ->allow_extra_args(option.takes == Option::Takes::Values);
  }
}

// A command beside what the parser knows of it.
struct Declared {
  CLI::App* app;
  const Command* command;
  std::unique_ptr<Options> options;
  std::vector<Declared> family;
};

Declared Declare(CLI::App& app, const Command& command) {
  Declared declared{&app, &command, std::make_unique<Options>(), {}};
  const Option help = HelpOption();
  app.set_help_flag(Joined(help.names), help.help);
  app.footer(command.examples);
  if (command.declare) command.declare(*declared.options);
  for (Option& option : declared.options->List()) AddTo(app, option);
  if (!command.family.empty()) app.require_subcommand(0, 1);
  for (const Command& member : command.family)
    declared.family.push_back(Declare(*app.add_subcommand(member.name, member.summary), member));
  return declared;
}

// The command that the user named last, or the program.
const Declared& LastNamedOf(const Declared& declared) {
  for (const Declared& member : declared.family)
    if (member.app->parsed()) return LastNamedOf(member);
  return declared;
}

// An option is mistaken for an option, and another word for a command.
std::vector<std::string> NamesLike(const std::string& word, const Declared& declared) {
  std::vector<std::string> names;
  if (word.starts_with('-')) {
    for (const Option& option : declared.options->List())
      if (!option.IsPositional()) names.insert(names.end(), option.names.begin(), option.names.end());
    names.emplace_back("--help");
  } else {
    for (const Declared& member : declared.family) names.push_back(member.command->name);
  }
  return names;
}

// What the parser says of words that it does not know, with what may have been meant.
std::string Unexpected(const CLI::ExtrasError& error, const CLI::App& app, const Declared& declared) {
  const Declared& named = LastNamedOf(declared);
  std::string message = error.what();
  for (const std::string& word : app.remaining(true))
    if (const std::string meant = Suggestion(word, NamesLike(word, named)); !meant.empty())
      return fmt::format("{}; did you mean {}?", message, meant);
  return message;
}

// The command that was named, or null.
const Declared* NamedOf(const Declared& declared) {
  if (declared.family.empty()) return &declared;
  for (const Declared& member : declared.family)
    if (member.app->parsed()) return NamedOf(member);
  return nullptr;
}

int ParseAndRun(int argc, char** argv, const Command& program) {
  CLI::App app(program.summary, program.name);
  const Declared declared = Declare(app, program);
  const Option version = VersionOption();
  app.set_version_flag(Joined(version.names), program.name + " " TSLBL_VERSION, version.help);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {
    return Print(app, e);
  } catch (const CLI::ExtrasError& e) {
    return WrongUsage(Unexpected(e, app, declared), app);
  } catch (const CLI::ParseError& e) {
    return WrongUsage(e.what(), app);
  } catch (const UsageError& e) {
    return WrongUsage(e.what(), app);
  }
  const Declared* named = NamedOf(declared);
  if (named == nullptr) return WrongUsage("a command is required", app);
  return named->command->run(*named->options);
}

}  // namespace

Option HelpOption() {
  return {.names = {"-h", "--help"},
          .valueName = "",
          .help = "Print this help message and exit",
          .choices = {},
          .takes = Option::Takes::Nothing,
          .take = {}};
}

Option VersionOption() {
  return {.names = {"--version"},
          .valueName = "",
          .help = "Display program version information and exit",
          .choices = {},
          .takes = Option::Takes::Nothing,
          .take = {}};
}

int RunCommandLine(int argc, char** argv, const Command& program) {
  return Guarded([&] { return ParseAndRun(argc, argv, program); });
}

}  // namespace TslTool
