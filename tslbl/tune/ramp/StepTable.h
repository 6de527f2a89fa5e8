#pragma once
// The Q1 step calibration of a tune, lens by lens.

#include <tslbl/Export.h>
#include <tslbl/tune/Q1CalPt.h>
#include <tslbl/tune/ramp/ByLens.h>
#include <cstdint>
#include <set>
#include <vector>

namespace TslBL {

// A copy of the table, to be edited and taken back.
class TSLBL_API StepTableFct {
 public:
  explicit StepTableFct(const std::vector<Q1CalPt>& table) : table_(table) {}

  std::vector<Q1CalPt> QStepFctTable() const { return table_; }

  // The curve that a lens has in the table; of two rows of one m/z the first counts.
  ByLens ExtractByLens(TuneField::Id field) const;
  // Replaces the curve of a lens. A point goes into the first row of its whole m/z, which keeps its own m/z.
  // Points without one become rows without a name, and the table is then sorted by m/z. A row that loses its
  // last lens stays.
  void Update(const ByLens& lens);
  // ByLensFct::KeepNominalMasses for a lens of the table.
  void KeepNominalMassesFor(const std::set<std::int32_t>& masses, TuneField::Id field);

 private:
  std::vector<Q1CalPt> table_;
};

}  // namespace TslBL
