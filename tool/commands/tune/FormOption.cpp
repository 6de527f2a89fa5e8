#include <tool/commands/tune/FormOption.h>

namespace TslTool {

void DeclareForm(Options& options, std::string& to) {
  options.Choice("--to", to, {"xml", "binary"},
                 "Form of FILE; without this a document if its name ends in .xml, else binary");
}

TuneForm FormFor(const std::string& to, const std::string& file) {
  return to.empty() ? FormOfName(file) : to == "xml" ? TuneForm::Xml : TuneForm::Binary;
}

}  // namespace TslTool
