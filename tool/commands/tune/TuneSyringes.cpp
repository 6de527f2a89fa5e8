// tslbl tune syringes: the catalogue of syringes.

#include <fmt/format.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/SyringeCatalogue.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>

namespace TslTool {
namespace {

int RunSyringes() {
  const std::vector<KnownSyringe> syringes = KnownSyringes();
  if (syringes.empty())
    throw InputError(SyringeCatalogueFile(), "", "there is no such file, or no syringe can be read from it");
  for (const KnownSyringe& syringe : syringes)
    Print(fmt::format("{}\t{}\n", OnOneLine(syringe.Name()), Shown(syringe.model.Diameter)));
  return kDone;
}

}  // namespace

Command TuneSyringesCommand() {
  return {.name = "syringes",
          .summary = "Lists the catalogue of syringes",
          .examples =
              "A line \"MAKE/MODEL\", tab, diameter in mm each. The catalogue is the site's own: a file\n"
              "SyringeList.xml beside libtslbl.so.\n\n"
              "Example:\n"
              "  tslbl tune syringes | grep -i hamilton\n",
          .declare = [](Options&) {},
          .run = [](const Options&) { return RunSyringes(); }};
}

}  // namespace TslTool
