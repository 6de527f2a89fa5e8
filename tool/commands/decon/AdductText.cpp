#include <tool/commands/decon/AdductText.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::AdductIonInfo;
using TslBL::ChargeStateParams;

constexpr double kHeaviest = 1000.0;  // Da

struct NamedIon {
  const char* name;
  AdductIonInfo::AdductIon ion;
};
constexpr NamedIon kIons[] = {{"proton", AdductIonInfo::Proton},
                              {"ammonium", AdductIonInfo::Ammonium},
                              {"sodium", AdductIonInfo::Sodium},
                              {"potassium", AdductIonInfo::Potassium}};

void SetCustom(const AdductIonInfo& ion, ChargeStateParams& params) {
  params.AdductIon = AdductIonInfo::Custom;
  params.CustomAdductIon = ion;
}

bool IsNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("+-.0123456789eE") == std::string::npos;
}

double MassOf(const std::string& option, const std::string& text) {
  if (!IsNumber(text))
    throw UsageError(fmt::format(
        "{}: \"{}\" is not one of proton, ammonium, sodium, potassium, loss, nor a mass", option, text));
  const double mass = ParseReal(option, text);
  if (!(std::abs(mass) <= kHeaviest))
    throw UsageError(fmt::format("{}: {} Da is not from {} to {}", option, mass, -kHeaviest, kHeaviest));
  if (mass == 0.0) throw UsageError(fmt::format("{}: an ion of {} Da carries no charge", option, text));
  return mass;
}

}  // namespace

void SetAdduct(const std::string& option, const std::string& text, ChargeStateParams& params) {
  for (const auto& [name, ion] : kIons) {
    if (text != name) continue;
    params.AdductIon = ion;
    return;
  }
  if (text == "loss") return SetLossOfProton(params);
  const std::size_t comma = text.find(',');
  const double mono = MassOf(option, text.substr(0, comma));
  const double average = comma == std::string::npos ? mono : MassOf(option, text.substr(comma + 1));
  SetCustom({TslCommon::FromUtf8(text), mono, average}, params);
}

void SetLossOfProton(ChargeStateParams& params) {
  const AdductIonInfo proton = AdductIonInfo::GetStandardAdductIon(AdductIonInfo::Proton);
  SetCustom({L"-" + proton.Symbol, -proton.MonoMass, -proton.AvgMass}, params);
}

}  // namespace TslTool
