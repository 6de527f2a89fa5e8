#pragma once
// A spectrum of a foreign file, and the source that hands such spectra out one after the other.

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tool/io/ColumnNames.h>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// Why a spectrum cannot be read whole, though others of its file can.
struct Defect {
  std::string what;    // completes the sentence "N spectra ..."
  std::string place;   // in the file
  std::string reason;  // in full, as of an error
};

// One spectrum as the file gives it. The two arrays have the same length and finite values; m/z ascends
// strictly (in a Centroid scan two peaks may share one m/z). Axis.h says what is done to an axis that does
// not.
struct Scan {
  enum Representation { Profile, Centroid, Unknown };

  std::uint32_t number = 0;  // N of "scan=N" in the id, else the 1-based position in the file
  std::string id;            // the file's own name for the scan; a text has none
  double rtSeconds = std::numeric_limits<double>::quiet_NaN();  // NaN: the file gives no time
  int msLevel = 0;                                              // 0: the file gives no level
  int polarity = 0;                                             // +1 or -1; 0: the file does not tell
  // One of several kinds of scans that the instrument takes in turn, as the id tells; 0: it does not.
  std::uint32_t function = 0;
  bool isOfCalibration = false;  // of a lock mass, say, and not of the sample
  Representation representation = Unknown;
  std::vector<double> mz;
  std::vector<double> amplitude;
  std::optional<Defect> defect;  // both arrays are empty then
};

// Which scans are wanted: all ranges include their ends. A scan without a time, level, polarity or function
// is wanted only where every one is. And which columns of a text.
struct ScanFilter {
  std::uint32_t firstNumber = 0;
  std::uint32_t lastNumber = std::numeric_limits<std::uint32_t>::max();
  double rtFrom = -std::numeric_limits<double>::infinity();
  double rtTo = std::numeric_limits<double>::infinity();
  std::vector<CountRange> numbers = {};  // within the first and the last; empty: every one
  int msLevel = 0;                       // 0: every one
  int polarity = 0;                      // +1 or -1; 0: every one
  std::uint32_t function = 0;            // 0: every one
  bool takesCalibrations = true;
  ColumnChoice columns = {};

  bool WantsAll() const {
    ScanFilter all;
    all.columns = columns;
    all.takesCalibrations = takesCalibrations;
    return *this == all;
  }
  bool WantsNumber(std::uint32_t number) const {
    const auto holds = [&](const CountRange& range) { return range.from <= number && number <= range.to; };
    return firstNumber <= number && number <= lastNumber &&
           (numbers.empty() || std::ranges::any_of(numbers, holds));
  }
  bool Wants(const Scan& scan) const {
    const bool everyTime = rtFrom == ScanFilter().rtFrom && rtTo == ScanFilter().rtTo;
    return WantsNumber(scan.number) && (everyTime || (rtFrom <= scan.rtSeconds && scan.rtSeconds <= rtTo)) &&
           (msLevel == 0 || msLevel == scan.msLevel) && (polarity == 0 || polarity == scan.polarity) &&
           (function == 0 || function == scan.function) && (takesCalibrations || !scan.isOfCalibration);
  }
  bool operator==(const ScanFilter&) const = default;
};

// The term of the vocabulary that says how the ids of a file are built; empty if the file does not tell.
struct IdFormat {
  std::string accession = {};
  std::string name = {};
};

// What stands in a file beside its spectra, and is passed over.
struct Chromatograms {
  std::uint64_t count = 0;
  std::uint64_t points = 0;  // that they announce, in all
};

// Hands out the scans of one file in the file's order. Holds one scan at a time, whatever the size of the
// file. Every failure but the defect of a scan is an InputError; after one the source is spent. Not for use
// by two threads at once.
class ScanSource {
 public:
  virtual ~ScanSource() = default;

  // To be set before the first Next. Arrays of scans that are not wanted are not decoded. Throws UsageError
  // for a choice of columns where there are none.
  void SetFilter(const ScanFilter& filter) {
    if (filter.columns.IsGiven() && !HasColumns()) RefuseColumns(Format());
    filter_ = filter;
  }
  [[noreturn]] static void RefuseColumns(const std::string& format) {
    throw UsageError("--columns: is for text, and this is " + format);
  }

  // Fills `scan` with the next wanted one and reuses its memory; false when there is none left. A defect
  // further down in the file is found when it is reached, so a caller that must not give half a result
  // reads to the end before it publishes.
  virtual bool Next(Scan& scan) = 0;

  // How many scans the file announces, wanted or not; nothing if it does not tell.
  virtual std::optional<std::uint64_t> Count() const = 0;

  virtual std::string Format() const = 0;

  virtual IdFormat Ids() const { return {}; }

  // Complete once Next has returned false.
  virtual Chromatograms PassedOver() const { return {}; }

  // What was odd but readable so far, one sentence each, without the file's name. Complete once Next has
  // returned false.
  virtual std::vector<std::string> Warnings() const = 0;

  // What of a file that can be read in several ways was taken for what, likewise.
  virtual std::vector<std::string> Notes() const { return {}; }

 protected:
  virtual bool HasColumns() const { return false; }
  const ScanFilter& Filter() const { return filter_; }

 private:
  ScanFilter filter_;
};

}  // namespace TslTool
