// tslbl method show: a method as a sheet or as a picture.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodPlot.h>
#include <tool/commands/method/MethodSheet.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Output.h>
#include <tool/frame/UsageError.h>
#include <tool/plot/PictureName.h>
#include <memory>

namespace TslTool {
namespace {

struct ShowArguments {
  std::string file;
  std::string plot;
  SwitchTime switchTime;
};

int RunShow(const ShowArguments& arguments) {
  if (arguments.file.empty()) throw UsageError("FILE is missing");
  RequirePictureName("--plot", arguments.plot);
  if (!arguments.plot.empty() && SameFile(arguments.file, arguments.plot))
    throw UsageError("--plot: " + arguments.plot + " is the method to be shown");
  const TslBL::MethodRules rules(arguments.switchTime.Get(), LoadMethodWithWarning(arguments.file).method);
  if (arguments.plot.empty()) {
    Print(MethodSheet(rules));
    return kDone;
  }
  Output output(arguments.plot);
  output.Write(MethodPlot(rules));
  output.Commit();
  return kDone;
}

}  // namespace

Command MethodShowCommand() {
  auto arguments = std::make_shared<ShowArguments>();
  return {
      .name = "show",
      .summary = "Shows a method as a sheet or as a picture",
      .examples =
          "The sheet has the program over time, the time periods with the items of their sequences, the\n"
          "valve, and what the rules find; over time + and - are the polarity of a time period, m is both "
          "in\n"
          "turn, and the valve leads to S, the source, or W, waste. The picture, an SVG file, has the time\n"
          "periods, one loop of each with its scans over m/z, and the valve. Delays are shown as the rules\n"
          "work them out.\n\n"
          "Examples:\n"
          "  tslbl method show survey.xml\n"
          "  tslbl method show survey.xml --plot survey.svg\n",
      .declare =
          [arguments](Options& options) {
            options.Value("FILE", arguments->file, "The method");
            options.Value("--plot FILE", arguments->plot,
                          "Write a picture to this file instead of the sheet");
            arguments->switchTime.Declare(options);
          },
      .run = [arguments](const Options&) { return RunShow(*arguments); }};
}

}  // namespace TslTool
