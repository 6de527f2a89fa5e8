#pragma once
// Whether a spectrum is a profile or centroid data, by its points.

#include <tool/io/Scan.h>

namespace TslTool {

// Points of a profile follow each other at about the same distance, at least around the tallest peaks; those
// of centroid data lie where the peaks are, and farther apart than a peak is wide. What the file says is
// overruled only where the points are plain: in steps that are all alike, or in those of isotopes
// (IsotopeSteps.h), or where each stands alone between zeros (Sticks.h). What it does not say is judged by
// most of them, and by how regularly they follow each other; where the peaks above a tenth of the tallest are
// of 5 regular points within 0.08 m/z or more, whatever lies between them is the noise that some program
// left. Even points farther apart than in any mass spectrum are a profile if the file says so, unless their
// steps are of 1 or more, or if peaks of at least 5 points rise from steps up to 10, or to 0.003 of the
// highest m/z. An axis that was rounded is judged without its rounding (RoundedAxis.h). Fewer than 3 points
// are taken for a profile unless they are marked. Returns Profile or Centroid. O(n).
Scan::Representation JudgedRepresentation(const Scan& scan);

}  // namespace TslTool
