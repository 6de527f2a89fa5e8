#include <tslbl/chargestate/SaveDebugFile.h>

#include <tslbl/chargestate/CSDebugFiles.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/WholeFile.h>
#include <iostream>
#include <stdexcept>

namespace TslBL {

std::atomic<std::uint8_t> csDebugFiles{0};

void SaveDebugFile(const std::wstring& name, const std::wstring& document) {
  if (csDebugFiles != 1) return;
  try {
    const std::string bytes = ToUtf8(DeconXMLParser(document).QText());
    if (!WriteWholeFile(L"C:\\CSD_" + name + L".xml", bytes))
      std::wcout << L"Failed saving debug XML result file.\n";
  } catch (const std::runtime_error&) {
    std::wcout << L"Failed creating debug XML result file.\n";
  }
}

}  // namespace TslBL
