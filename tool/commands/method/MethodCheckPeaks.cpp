// tslbl method check-peaks: the method that looks at known peaks.

#include <fmt/format.h>

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/method/CheckPeakMethod.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <memory>
#include <set>

namespace TslTool {
namespace {

struct CheckPeaksArguments {
  std::string tune;
  std::string mzs;
  std::string output;
  std::string to;
};

std::set<double> ParseMZs(const std::string& text) {
  std::set<double> mzs;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    const double mz = ParseReal("--mz", std::string_view(text).substr(begin, end - begin));
    const double least = TslBL::DevTuneRules::QMinMz();
    const double most = TslBL::DevTuneRules::QMaxMz();
    if (!(mz >= least && mz <= most))
      throw UsageError(
          fmt::format("--mz: {} is not from {} to {}, the m/z of the instrument", mz, least, most));
    if (!mzs.insert(mz).second) throw UsageError(fmt::format("--mz: {} is given twice", mz));
    begin = end + 1;
  }
  return mzs;
}

int RunCheckPeaks(const CheckPeaksArguments& arguments) {
  if (arguments.tune.empty()) throw UsageError("TUNE is missing");
  if (arguments.mzs.empty()) throw UsageError("--mz is missing");
  if (arguments.output.empty()) throw UsageError("--output is missing");
  const TslBL::Method method = TslBL::CheckPeakMethod(ParseMZs(arguments.mzs), Load(arguments.tune));
  // Without a change of polarity, as all scans are of one tune.
  SaveNewMethod(TslBL::MethodRules(0.0, method), FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

}  // namespace

Command MethodCheckPeaksCommand() {
  auto arguments = std::make_shared<CheckPeaksArguments>();
  return {
      .name = "check-peaks",
      .summary = "Makes the method that looks at known peaks",
      .examples =
          "One time period without end; each m/z has a scan of 20 m/z around it in steps of 0.1, all else\n"
          "as in the tune. What the rules of a tune refuse stays as it is there.\n\n"
          "Example:\n  tslbl method check-peaks esi.xml --mz 118.09,322.05,622.03 --output check.xml\n",
      .declare =
          [arguments](Options& options) {
            options.Value("TUNE", arguments->tune, "The tune of all scans");
            options.Value("--mz LIST", arguments->mzs, "The m/z of the peaks, between commas");
            options.Value("-o,--output FILE", arguments->output, "The method to write; it must not exist");
            DeclareForm(options, arguments->to);
          },
      .run = [arguments](const Options&) { return RunCheckPeaks(*arguments); }};
}

}  // namespace TslTool
