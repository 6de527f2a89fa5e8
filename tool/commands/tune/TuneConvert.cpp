// tslbl tune convert: a tune in another form.

#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Output.h>
#include <tool/frame/UsageError.h>
#include <memory>

namespace TslTool {
namespace {

struct ConvertArguments {
  std::string input;
  std::string output;
  std::string to;
};

int RunConvert(const ConvertArguments& arguments) {
  if (arguments.input.empty()) throw UsageError("FILE is missing");
  if (arguments.output.empty()) throw UsageError("--output is missing");
  if (SameFile(arguments.input, arguments.output))
    throw UsageError("--output: " + arguments.output + " is the tune to be converted");
  Save(Load(arguments.input), FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

}  // namespace

Command TuneConvertCommand() {
  auto arguments = std::make_shared<ConvertArguments>();
  return {.name = "convert",
          .summary = "Turns a tune into a document or a binary file",
          .examples =
              "Older binary tunes are made current. What a form does not keep is shown: a document\n"
              "holds six digits of a number. A file that is there already is replaced.\n\n"
              "Examples:\n"
              "  tslbl tune convert old.tune --output tune.xml\n"
              "  tslbl tune convert tune.xml --output tune.bin --to binary\n",
          .declare =
              [arguments](Options& options) {
                options.Value("FILE", arguments->input, "The tune to convert");
                options.Value("-o,--output FILE", arguments->output, "Where it goes");
                DeclareForm(options, arguments->to);
              },
          .run = [arguments](const Options&) { return RunConvert(*arguments); }};
}

}  // namespace TslTool
