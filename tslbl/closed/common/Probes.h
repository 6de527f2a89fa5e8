#pragma once
// The probes that can be fitted to the ion source.

#include <tslbl/Export.h>
#include <cstdint>
#include <string>

namespace TslCommon {

struct TSLBL_API Probes {
  // Stored in tunes; the numbers never change. An ESI source takes the two ESI kinds.
  enum ProbeTypes : std::uint32_t { ESI = 0, APCI = 1, LowFlowESI = 2 };

  // Name and number, such as "APCI (1)": unmistakable in a document.
  static std::wstring GetName(ProbeTypes probe);
  // The name alone, for messages.
  static std::wstring GetNameNoId(ProbeTypes probe);
  // Reads either form, ignoring case; any other text gives ESI.
  static ProbeTypes GetId(const std::wstring& name);
  // Whether the source can be run with this kind of probe.
  static bool IsUsable(ProbeTypes probe);
};

}  // namespace TslCommon
