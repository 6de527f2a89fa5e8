#include <tslbl/closed/common/Probes.h>
#include <tslbl/closed/common/Text.h>

namespace TslCommon {
namespace {

constexpr std::uint32_t kHighestProbe = 7;  // probe identification pins read three bits
constexpr const wchar_t* kNames[] = {L"ESI", L"APCI", L"Low-flow ESI"};

}  // namespace

std::wstring Probes::GetName(ProbeTypes probe) {
  return GetNameNoId(probe) + L" (" + ToText(std::uint32_t{probe}) + L")";
}

std::wstring Probes::GetNameNoId(ProbeTypes probe) { return IsUsable(probe) ? kNames[probe] : L"Unknown"; }

Probes::ProbeTypes Probes::GetId(const std::wstring& name) {
  for (std::uint32_t id = 0; id <= kHighestProbe; ++id) {
    const auto probe = static_cast<ProbeTypes>(id);
    const bool byName = IsUsable(probe) && EqualsIgnoreCase(name, GetNameNoId(probe));
    if (byName || EqualsIgnoreCase(name, GetName(probe))) return probe;
  }
  return ESI;
}

bool Probes::IsUsable(ProbeTypes probe) { return probe <= LowFlowESI; }

}  // namespace TslCommon
