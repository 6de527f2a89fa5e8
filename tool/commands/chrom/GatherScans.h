#pragma once
// From the points of scans to chromatograms.

#include <tool/commands/chrom/Chromatogram.h>
#include <tool/commands/chrom/CurveChoice.h>
#include <tool/commands/chrom/ScanPoints.h>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace TslTool {

// Scans of one MS level, polarity, tune and, of level 1, function make chromatograms of their own, as their
// amplitudes cannot be compared. Holds a few numbers a scan.
class GatherScans {
 public:
  // `file` is how messages call the input. `isMean`: a range gives the mean of its points, not their sum.
  // `isOneLevel`: the user chose the level.
  GatherScans(std::string file, const CurveChoice& choice, bool isMean, bool isOneLevel);

  // In the order of the file. Throws InputError for a scan without a time, and for one whose time does not
  // come after that of the scan before it of the same kind.
  void Add(const ScanPoint& point);

  // The curves: total ion current, base peak and those that were chosen, of each kind of scans; of several MS
  // levels the lowest alone. Throws InputError if no kind has two scans.
  std::vector<Chromatogram> Curves() const;

  std::uint64_t Scans() const { return scans_; }
  // What was taken of what the file has, one sentence each. After the last scan.
  std::vector<std::string> Notes() const;
  // Ranges in which no scan has a point, and kinds of scans that are left out.
  std::vector<std::string> Warnings() const;

 private:
  struct Kind {
    int level = 0;
    int polarity = 0;
    std::uint32_t tune = 0;
    std::uint32_t function = 0;

    auto operator<=>(const Kind&) const = default;
  };
  struct Column {
    std::vector<double> values;
    std::vector<double> variance;
  };
  struct Group {
    std::vector<double> seconds;
    std::vector<std::uint32_t> scans;
    std::vector<Column> columns;
    bool isCounted = true;
  };

  static Kind KindOf(const ScanPoint& point);
  void AddPoint(const ScanPoint& point, Group& group);
  double RangeVariance(const ScanPoint& point, std::size_t curve) const;
  int LevelTaken() const;
  bool IsTaken(const Kind& kind) const;
  Chromatogram CurveOf(const Group& group, std::size_t index, const std::string& suffix) const;
  std::string SuffixOf(const Kind& kind) const;
  std::string TextOf(const Kind& kind) const;

  std::string file_;
  const CurveChoice& choice_;
  bool isMean_;
  bool isOneLevel_;
  std::uint64_t scans_ = 0;
  std::map<Kind, Group> groups_;
  std::vector<std::uint64_t> pointsIn_;  // of all scans, in each range
  double mzFrom_ = 0.0;
  double mzTo_ = 0.0;
  bool hasPoints_ = false;
};

}  // namespace TslTool
