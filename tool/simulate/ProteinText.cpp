#include <tool/simulate/ProteinText.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Visible.h>
#include <tool/simulate/Protein.h>

namespace TslTool {
namespace {

constexpr double kMostCounts = 1e9;

// The parts of one text, each of which names itself and the text if it is wrong.
class ProteinText {
 public:
  ProteinText(const std::string& text, const Instrument& instrument) : text_(text), instrument_(instrument) {
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos) Refuse("NAME=MASS is expected, as in myoglobin=16951.5");
    name_ = text.substr(0, sign);
    parts_ = SplitColons(std::string_view(text).substr(sign + 1));
    if (parts_.size() > 3) Refuse("behind NAME= come MASS:CHARGES:COUNTS and no more");
    parts_.resize(3);
  }

  std::string Name() const {
    if (name_.empty()) Refuse("NAME is empty");
    if (Visible(name_) != name_) Refuse("NAME has a character that a table cannot show");
    return name_;
  }

  double Mass() const {
    const double mass = ParseReal(Place("MASS"), parts_[0]);
    if (!(mass >= kLeastProteinMass && mass <= kMostProteinMass))
      Refuse(fmt::format("MASS: {} is not from {} to {} Da", mass, kLeastProteinMass, kMostProteinMass));
    return mass;
  }

  CountRange Charges(double mass) const {
    const CountRange scanned = ScannedCharges(mass, instrument_);
    if (parts_[1].empty()) {
      const CountRange usual = UsualCharges(mass);
      const CountRange charges = Common(usual, scanned);
      if (charges.to < charges.from) RefuseUnscanned("the usual ", usual);
      return charges;
    }
    const CountRange charges = ParseCountRange(Place("CHARGES"), parts_[1]);
    if (charges.from == 0) Refuse("CHARGES: 0 is no charge");
    if (charges.to > MostCharges(mass))
      Refuse(fmt::format("CHARGES: {} is more than {}, one for each 100 Da", charges.to, MostCharges(mass)));
    const CountRange seen = Common(charges, scanned);
    if (seen.to < seen.from) RefuseUnscanned("", charges);
    return charges;
  }

  double Counts() const {
    if (parts_[2].empty()) return kUsualProteinCounts;
    const double counts = ParseReal(Place("COUNTS"), parts_[2]);
    if (!(counts > 0.0 && counts <= kMostCounts))
      Refuse(fmt::format("COUNTS: {} is not above 0 and up to {}", counts, kMostCounts));
    return counts;
  }

 private:
  std::string Place(const std::string& part) const {
    return fmt::format("--protein: \"{}\": {}", text_, part);
  }
  [[noreturn]] void Refuse(const std::string& reason) const { throw UsageError(Place(reason)); }
  [[noreturn]] void RefuseUnscanned(const char* which, const CountRange& charges) const {
    Refuse(fmt::format("CHARGES: none of {}{}-{} has its m/z in the range that is scanned, {} to {}", which,
                       charges.from, charges.to, instrument_.mzLow, instrument_.mzHigh));
  }

  const std::string& text_;
  const Instrument& instrument_;
  std::string name_;
  std::vector<std::string> parts_;
};

}  // namespace

Compound ParseProtein(const std::string& text, const Instrument& instrument) {
  const ProteinText protein(text, instrument);
  const std::string name = protein.Name();
  const double mass = protein.Mass();
  const CountRange charges = protein.Charges(mass);
  return InfusedProtein(name, mass, charges, protein.Counts());
}

}  // namespace TslTool
