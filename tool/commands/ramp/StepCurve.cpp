#include <tool/commands/ramp/StepCurve.h>

#include <tslbl/tune/ramp/StepTable.h>

namespace TslTool {
namespace {

using Curve = std::vector<std::pair<double, double>>;

// The points stand at the m/z of the table's own rows where it has such rows.
Curve CurveOf(const RampResponse& response, std::size_t lens, const std::vector<TslBL::Q1CalPt>& table) {
  const TslBL::TuneField::Id field = response.steps.lenses[lens];
  TslBL::StepTableFct steps(table);
  TslBL::ByLensFct curve(steps.ExtractByLens(field));
  for (std::size_t i = 0; i < response.mz.size(); ++i)
    curve.AddMassValue(response.mz[i], response.steps.values[response.best[i]][lens]);
  steps.Update(curve.QByLens());
  const TslBL::ByLens points = steps.ExtractByLens(field);
  return {points.Values.begin(), points.Values.end()};
}

}  // namespace

std::vector<LensResult> LensResults(const RampResponse& response, const std::vector<TslBL::Q1CalPt>& table) {
  std::vector<LensResult> results;
  results.reserve(response.steps.lenses.size());
  for (std::size_t lens = 0; lens < response.steps.lenses.size(); ++lens) {
    const TslBL::TuneField::Id field = response.steps.lenses[lens];
    results.push_back({field, response.steps.values[response.overall][lens],
                       TslBL::TuneField::IsFieldSteppable(field) ? CurveOf(response, lens, table) : Curve()});
  }
  return results;
}

}  // namespace TslTool
