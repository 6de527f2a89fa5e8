// tslbl method convert: a method in another form.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/tune/FormOption.h>
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
    throw UsageError("--output: " + arguments.output + " is the method to be converted");
  SaveMethod(LoadMethodWithWarning(arguments.input).method, FormFor(arguments.to, arguments.output),
             arguments.output);
  return kDone;
}

}  // namespace

Command MethodConvertCommand() {
  auto arguments = std::make_shared<ConvertArguments>();
  return {
      .name = "convert",
      .summary = "Turns a method into a document or a binary file",
      .examples =
          "The method stays as it is, older binary ones are made current. What a form does not keep is\n"
          "shown: a document holds six digits of a number, a binary method one spectrum a run. A file that\n"
          "is there already is replaced.\n\n"
          "Examples:\n"
          "  tslbl method convert old.method --output method.xml\n"
          "  tslbl method convert method.xml --output method.bin --to binary\n",
      .declare =
          [arguments](Options& options) {
            options.Value("FILE", arguments->input, "The method to convert");
            options.Value("-o,--output FILE", arguments->output, "Where it goes");
            DeclareForm(options, arguments->to);
          },
      .run = [arguments](const Options&) { return RunConvert(*arguments); }};
}

}  // namespace TslTool
