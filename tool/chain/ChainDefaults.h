#pragma once
// The numbers of the usual chain where the user gives none: they follow the width of the peaks.

#include <tool/io/Preview.h>
#include <cstdint>
#include <optional>
#include <string>

namespace TslTool {

struct ChainDefaults {
  std::string smooth;              // as for --smooth
  std::uint32_t segment;           // of baseline and noise, points
  std::uint32_t sn;                // least signal-to-noise ratio
  std::optional<double> minWidth;  // m/z
  std::string reason;              // such as "peaks are 12.3 points wide"
  // As for --baseline and --noise, where the presets leave them to the data; and the segments of an adaptive
  // baseline, if they differ.
  std::string baseline = {};
  std::string noise = {};
  std::optional<std::uint32_t> adaptiveSegment = std::nullopt;
};

// `mzStep` is the spacing of the points where the instrument tells it: where no peak tells its width, that of
// the instrument's lines stands for it. Where there is neither, nothing is smoothed, which harms no peak.
//
// Smoothing: Savitzky-Golay of order 2 over 1.1 widths, none for peaks of less than 4 points. It takes 2 % of
// the height. Segments: 40 widths, 250 to 4000. Signal-to-noise ratio: 5; 6 where a spectrum is longer than
// 2200 widths, as it has more chances for a false peak; 7 without smoothing, as the tails of a few counts are
// heavy. Least width, where points are evenly spaced and peaks have at least 5: 0.55 widths, which most bumps
// of noise do not reach. Where noise runs over neighbouring points its bumps look like peaks: a ratio of 8,
// and segments of 1000 points at least. docs/numerics.md has what comes of it.
ChainDefaults DefaultsFor(const Preview& preview, std::optional<double> mzStep);

}  // namespace TslTool
