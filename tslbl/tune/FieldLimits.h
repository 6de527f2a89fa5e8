#pragma once
// The smallest value, the largest value and the resolution of every numeric tune field:
// one table for all probes, and for each kind of probe the rows of its own fields.
//
// A site may change rows with a text file "overrides.txt" beside the library: field
// number, minimum, maximum and step, separated by white space. The file is read once in
// the life of the process, by the first call of anything here. A row changes the tables
// that hold its field and never adds a field; reading stops at the first row that is no
// row, has a minimum above its maximum, or a step larger than its range. Logger "tslbl"
// tells at level Warn that a file was found.
//
// A field that has no row has limits of all zeros. Any number of threads may ask at once.

#include <tslbl/Export.h>
#include <tslbl/closed/common/Probes.h>

struct Limits {
  double Min = 0.0;
  double Max = 0.0;
  double Step = 0.0;  // one unit of the instrument's setting

  friend bool operator==(const Limits&, const Limits&) = default;
};

// `field` is a TuneField::Id.
class TSLBL_API FieldLimits {
 public:
  // The row for all probes.
  Limits QLimits(int field) const;
  // The row of this kind of probe, or else the one for all. A kind without rows of its own
  // has those for all.
  Limits QLimits(TslCommon::Probes::ProbeTypes probe, int field) const;
  // Limits of the absolute voltage of a lens that is stored relative to the lenses before
  // it; the step is the field's own. For any other field, its row for all probes.
  Limits QMinMaxStep(int field) const;
};

namespace TslBL {
using ::FieldLimits;
using ::Limits;
}  // namespace TslBL
