// The program and the list of its commands.

#include <tool/commands/Commands.h>

namespace TslTool {

Command Program() {
  return {.name = "tslbl",
          .summary = "Evaluates spectra of a single-quadrupole mass spectrometer.",
          .examples = "'tslbl COMMAND --help' describes a command in full.",
          .declare = {},
          .run = {},
          .family = {PeaksCommand(), OverlapCommand(), DeconCommand(), ChromCommand(), ResultsCommand(),
                     AverageCommand(), CalibrateCommand(), SimulateCommand(), InfoCommand(), TuneCommand(),
                     MethodCommand(), RampCommand(), ManualCommand()}};
}

}  // namespace TslTool
