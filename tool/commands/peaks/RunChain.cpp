#include <tool/commands/peaks/RunChain.h>

#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>

namespace TslTool {

void RunChain(const std::string& input, const std::vector<TslBL::CurveEval>& chain, LoadedSpectrum& loaded) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum, chain, changed, error))
    throw InputError(input, "scan " + std::to_string(loaded.scan), TslCommon::ToUtf8(error));
}

}  // namespace TslTool
