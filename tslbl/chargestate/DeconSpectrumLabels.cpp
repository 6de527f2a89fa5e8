// Labels and colours of series.

#include <tslbl/chargestate/DeconSpectrum.h>

#include <tslbl/closed/common/Truncate.h>

namespace TslBL {
namespace {

constexpr std::uint32_t kLetters = 26;

constexpr std::uint32_t kFirstColor = 0x8000;
constexpr int kLastColored = 30;
constexpr std::uint32_t kColors[] = {0xC0C0C0, 0xC000C0, 0x808000, 0x0080FF, 0x00C000,
                                     0x800000, 0x008080, 0xFF309B, 0xC0C000, 0x004080};

}  // namespace

std::wstring DeconSpectrum::CSSeriesObjToLabel(const CSSeries& series) {
  std::wstring letters;
  for (std::uint32_t rest = series.Id; rest != 0; rest = (rest - 1) / kLetters)
    letters.insert(letters.begin(), static_cast<wchar_t>(L'A' + (rest - 1) % kLetters));
  return (series.Type == CSSeries::Resolved ? L"R" : L"U") + letters;
}

CSSeries DeconSpectrum::CSSeriesLabelToObj(const std::wstring& label) {
  CSSeries series(label.starts_with(L'U') ? CSSeries::Unresolved : CSSeries::Resolved, 0);
  // A float holds the powers exactly as far as a number reaches.
  float power = 1.0F;
  for (std::size_t i = label.size(); i-- > 1; power *= static_cast<float>(kLetters))
    series.Id += (static_cast<std::uint32_t>(label[i]) - 64) * Truncate<std::uint32_t>(power);
  return series;
}

std::uint32_t DeconSpectrum::GetSeriesColor(int index) {
  if (index == 0) return kFirstColor;
  if (index < 0 || index > kLastColored) return 0;
  return kColors[static_cast<std::size_t>(index) % std::size(kColors)];
}

}  // namespace TslBL
