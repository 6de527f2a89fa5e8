#include <tool/commands/tune/TuneEdit.h>

#include <tool/commands/tune/CalibrantEdit.h>
#include <tool/commands/tune/FieldEdit.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/MZCalEdit.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <iterator>

namespace TslTool {
namespace {

using EditMaker = std::unique_ptr<TuneEdit> (*)(const RowWords& words);

struct RowForm {
  const char* name;
  EditMaker make;
};
constexpr RowForm kRowForms[] = {
    {"Calibrant", MakeCalibrantEdit}, {"MZCal", MakeMZCalEdit}, {"MZCalName", MakeMZCalNameEdit}};

const RowForm* FindRowForm(const std::string& name) {
  for (const RowForm& form : kRowForms)
    if (SameText(form.name, name)) return &form;
  return nullptr;
}

}  // namespace

std::unique_ptr<TuneEdit> ReadTuneEdit(const TslBL::Tune& tune, const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0) throw UsageError("\"" + text + "\" is not FIELD=VALUE");
  const std::string name = text.substr(0, equals);
  const std::string value = text.substr(equals + 1);
  const auto at = name.find('@');
  const RowForm* form = FindRowForm(name.substr(0, at));
  if (at == std::string::npos) {
    if (form != nullptr) throw UsageError(name + ": the m/z is missing, as in " + form->name + "@118");
    return MakeFieldEdit(tune, name, value);
  }
  const RowWords words = {name, ParseReal(name, name.substr(at + 1)), value};
  return form != nullptr ? form->make(words) : MakeLensEdit(name.substr(0, at), words);
}

}  // namespace TslTool
