// tslbl method convert: a method in another form.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/tune/ConvertOptions.h>
#include <memory>

namespace TslTool {
namespace {

int RunConvert(const ConvertOptions& arguments) {
  arguments.Require();
  SaveMethod(LoadMethodWithWarning(arguments.Input()).method, arguments.Form(), arguments.Output());
  return kDone;
}

}  // namespace

Command MethodConvertCommand() {
  auto arguments = std::make_shared<ConvertOptions>("method");
  return {
      .name = "convert",
      .summary = "Turns a method into a document or a binary file",
      .examples =
          "The method stays as it is, older binary ones are made current; of a run it is the method that\n"
          "acquired it. What a form does not keep is shown: a document holds six digits of a number, a "
          "binary\n"
          "method one spectrum a run. A file that is there already is replaced.\n\n"
          "Examples:\n"
          "  tslbl method convert old.method --output method.xml\n"
          "  tslbl method convert method.xml --output method.bin --to binary\n"
          "  tslbl method convert ramp.run --output ramp.xml\n",
      .declare = [arguments](Options& options) { arguments->Declare(options); },
      .run = [arguments](const Options&) { return RunConvert(*arguments); }};
}

}  // namespace TslTool
