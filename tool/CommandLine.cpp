#include <tool/CommandLine.h>

#include <CLI/CLI.hpp>

#include <tool/Interrupt.h>
#include <tslbl/Version.h>
#include <tslbl/closed/common/ComponentRegistry.h>
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
    app_.add_option(names, value, help);
  }
  void Value(const std::string& names, std::optional<double>& value, const std::string& help) override {
    app_.add_option(names, value, help);
  }
  void Value(const std::string& names, std::optional<std::uint32_t>& value,
             const std::string& help) override {
    app_.add_option(names, value, help);
  }
  void Value(const std::string& names, std::optional<std::uint64_t>& value,
             const std::string& help) override {
    app_.add_option(names, value, help);
  }
  void Choice(const std::string& names, std::string& value, const std::vector<std::string>& choices,
              const std::string& help) override {
    app_.add_option(names, value, help)->check(CLI::IsMember(choices))->capture_default_str();
  }
  bool Given(const std::string& name) const override { return app_.count(name) > 0; }

 private:
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
  } catch (const Interrupted&) {
    return Fail("interrupted", kFailed);
  } catch (const std::bad_alloc&) {
    return Fail("out of memory", kFailed);
  } catch (const std::exception& e) {
    return Fail(e.what(), kFailed);
  } catch (const TslCommon::ComError& e) {
    return Fail("a component failed with code " + std::to_string(e.code), kFailed);
  }
}

}  // namespace

int RunCommandLine(int argc, char** argv, std::vector<Command> commands) {
  CLI::App app("Evaluates spectra of a single-quadrupole mass spectrometer.", "tslbl");
  app.set_version_flag("--version", "tslbl " TSLBL_VERSION);
  app.require_subcommand(1);
  app.footer("'tslbl COMMAND --help' tells all about a command.");
  std::vector<std::unique_ptr<CliOptions>> options;
  for (const Command& command : commands) {
    CLI::App* sub = app.add_subcommand(command.name, command.summary);
    sub->footer(command.examples);
    command.declare(*options.emplace_back(std::make_unique<CliOptions>(*sub)));
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {  // --help, --version
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    return Fail(std::string(e.what()) + "\nRun with --help for more information.", kWrongUsage);
  }
  for (std::size_t i = 0; i < commands.size(); ++i)
    if (app.got_subcommand(commands[i].name)) return Guarded([&] { return commands[i].run(*options[i]); });
  return kWrongUsage;
}

}  // namespace TslTool
