#include <tool/simulate/IsotopeLines.h>

#include <tslbl/closed/engines/IsotopePattern.h>

namespace TslTool {
namespace {

using TslMath::Composition;
using TslMath::IsotopePattern;

Composition AverageResidues() { return TslMath::ParseFormula("C117H184N32O35S"); }

IsotopePattern PatternOfMonoMass(double monoMass) {
  return TslMath::MakeIsotopePattern(TslMath::ScaleToMass(AverageResidues(), monoMass));
}

// Whole atoms come within a dalton or so of the mass; the rest, too little to change the shape, is shifted.
IsotopePattern PatternOfAverageMass(double averageMass) {
  const Composition unit = AverageResidues();
  const double monoMass = averageMass * (TslMath::MonoMass(unit) / TslMath::AverageMass(unit));
  // Ends that are cut further out than usual keep the mean of wide patterns.
  IsotopePattern pattern =
      TslMath::MakeIsotopePattern(TslMath::ScaleToMass(unit, monoMass), {.molecule = 1e-9});
  pattern.monoMass = averageMass - pattern.Mean();
  return pattern;
}

IsotopePattern PatternOf(const Compound& compound) {
  if (!compound.formula.empty()) return TslMath::MakeIsotopePattern(TslMath::ParseFormula(compound.formula));
  if (compound.averageMass > 0.0) return PatternOfAverageMass(compound.averageMass);
  return PatternOfMonoMass(compound.monoMass);
}

}  // namespace

std::vector<IsotopeMass> IsotopeMasses(const Compound& compound) {
  const IsotopePattern pattern = PatternOf(compound);
  std::vector<IsotopeMass> masses;
  for (std::size_t i = 0; i < pattern.probability.size(); ++i)
    masses.push_back({pattern.monoMass + pattern.mass[i], pattern.probability[i]});
  return masses;
}

std::vector<Line> IsotopeLines(const std::vector<IsotopeMass>& masses, std::uint32_t charge, double blur,
                               int polarity) {
  std::vector<Line> lines;
  double first = 0.0;  // of those that the last line stands for
  for (const IsotopeMass& isotope : masses) {
    const Line line{isotope.mass / charge + polarity * kProton, isotope.share};
    if (lines.empty() || line.mz - first >= blur) {
      lines.push_back(line);
      first = line.mz;
    } else if (line.height > 0.0) {
      Line& sum = lines.back();
      sum.height += line.height;
      sum.mz += (line.mz - sum.mz) * (line.height / sum.height);
    }
  }
  return lines;
}

}  // namespace TslTool
