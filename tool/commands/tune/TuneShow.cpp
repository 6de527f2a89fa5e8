// tslbl tune show: a tune as a sheet, or one or two as a picture.

#include <fmt/format.h>

#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TunePlot.h>
#include <tool/commands/tune/TuneSheet.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Output.h>
#include <tool/frame/UsageError.h>
#include <tool/plot/PictureName.h>
#include <tslbl/closed/common/Text.h>
#include <memory>
#include <vector>

namespace TslTool {
namespace {

using TslBL::Tune;

struct ShowArguments {
  std::vector<std::string> files;
  std::string plot;
};

int RunShow(const ShowArguments& arguments) {
  if (arguments.files.empty()) throw UsageError("FILE is missing");
  if (arguments.files.size() > 2) throw UsageError("FILE: one tune or two can be shown");
  RequirePictureName("--plot", arguments.plot);
  std::vector<PlottedTune> tunes;
  for (const std::string& file : arguments.files) {
    if (!arguments.plot.empty() && SameFile(file, arguments.plot))
      throw UsageError("--plot: " + arguments.plot + " is a tune to be shown");
    const Tune tune = Load(file);
    tunes.push_back({tune, fmt::format("{} ({})", TslCommon::ToUtf8(tune.Info.Name), file)});
  }
  if (!arguments.plot.empty()) {
    Output output(arguments.plot);
    output.Write(TunePlot(tunes));
    output.Commit();
    return kDone;
  }
  for (std::size_t i = 0; i < tunes.size(); ++i) {
    const std::string heading = tunes.size() > 1 ? arguments.files[i] + "\n\n" : "";
    Print((i > 0 ? "\n" : "") + heading + TuneSheet(tunes[i].tune));
  }
  return kDone;
}

}  // namespace

Command TuneShowCommand() {
  auto arguments = std::make_shared<ShowArguments>();
  return {.name = "show",
          .summary = "Shows a tune as a sheet, or one or two as a picture",
          .examples =
              "The sheet has the fields with their units and limits, the calibrations, what each lens\n"
              "does over m/z, and the timing. The picture, an SVG file, has the lens curves and the\n"
              "settling over m/z, of two tunes in two colours.\n\n"
              "Examples:\n"
              "  tslbl tune show esi.xml\n"
              "  tslbl tune show before.xml after.xml --plot lenses.svg\n",
          .declare =
              [arguments](Options& options) {
                options.Values("FILE", arguments->files, "A tune, or two");
                options.Value("--plot FILE", arguments->plot,
                              "Write a picture to this file instead of the sheet");
              },
          .run = [arguments](const Options&) { return RunShow(*arguments); }};
}

}  // namespace TslTool
