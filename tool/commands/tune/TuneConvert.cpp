// tslbl tune convert: a tune in another form.

#include <tool/commands/tune/ConvertOptions.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneStore.h>
#include <memory>

namespace TslTool {
namespace {

int RunConvert(const ConvertOptions& arguments) {
  arguments.Require();
  Save(Load(arguments.Input()), arguments.Form(), arguments.Output());
  return kDone;
}

}  // namespace

Command TuneConvertCommand() {
  auto arguments = std::make_shared<ConvertOptions>("tune");
  return {.name = "convert",
          .summary = "Turns a tune into a document or a binary file",
          .examples =
              "Older binary tunes are made current. What a form does not keep is shown: a document\n"
              "holds six digits of a number. A file that is there already is replaced.\n\n"
              "Examples:\n"
              "  tslbl tune convert old.tune --output tune.xml\n"
              "  tslbl tune convert tune.xml --output tune.bin --to binary\n",
          .declare = [arguments](Options& options) { arguments->Declare(options); },
          .run = [arguments](const Options&) { return RunConvert(*arguments); }};
}

}  // namespace TslTool
