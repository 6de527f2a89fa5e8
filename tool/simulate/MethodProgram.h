#pragma once
// The spectra that a method acquires, in their order and with their times.
//
// Time periods begin one behind the other, each after the time that the one before was given, however its
// spectra fill it. In it the first tune run of each item runs, item after item, round and round; what would
// not be complete when the time is over is not acquired. A time period without end goes through its sequence
// as often as its Loops say. What a tune run would do on a trigger is not done.

#include <tslbl/method/MethodRules.h>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace TslTool {

struct ProgrammedSpectrum {
  std::uint32_t index = 0;  // from 0, of all that are acquired
  std::uint32_t period = 0;
  std::uint32_t tuneId = 0;
  std::uint32_t milliseconds = 0;  // at which it begins
  double fraction = 0.0;           // of the run, at its middle
  bool isSaved = true;
  bool isToWaste = false;  // the valve, when it begins
};

class MethodProgram {
 public:
  static constexpr double kMostSpectra = 1e6;
  static constexpr double kMostPoints = 1e10;

  // Of a method that the rules hold valid. Throws std::runtime_error for one that would acquire more spectra
  // or points than these, or longer than 32 bits can time.
  explicit MethodProgram(const TslBL::MethodRules& rules);

  // Of each time period.
  const std::vector<std::uint64_t>& Spectra() const { return spectra_; }
  std::uint64_t Count() const;
  // How many of them are kept.
  std::uint64_t Saved() const;
  double Seconds() const { return end_ / 1e6; }

  // The next one; nothing behind the last.
  std::optional<ProgrammedSpectrum> Next();

 private:
  // Microseconds: whole numbers, and exact as far as the instrument's clock goes.
  using Time = double;

  struct Item {
    std::uint32_t tuneId;
    std::uint32_t records;
    Time settling;  // once, before the first record
    Time duration;  // of a record
    double points;

    Time Total() const { return settling + records * duration; }
  };
  struct Period {
    bool isSaved;
    Time begin;  // of the first item
    Time end;
    std::vector<Item> items;

    Time Loop() const;
  };

  Period MakePeriod(const TslBL::MethodRules& rules, std::uint32_t index) const;
  std::uint64_t SpectraIn(const Period& period) const;
  void RequireBounded(const Period& period);
  bool IsToWaste(Time at) const;
  // The place behind the present one.
  void Step();

  std::vector<Period> periods_;
  std::vector<std::uint64_t> spectra_;
  std::vector<std::pair<Time, bool>> waste_;  // from when on the valve stands there
  Time end_ = 0.0;
  double points_ = 0.0;

  // Where Next stands.
  std::size_t period_ = 0;
  std::size_t item_ = 0;
  std::uint32_t record_ = 0;
  Time at_ = 0.0;
  std::uint32_t index_ = 0;
};

}  // namespace TslTool
