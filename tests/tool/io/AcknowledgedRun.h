#pragma once
// A run whose writer tells another process what it has written.

#include <sys/mman.h>

#include <atomic>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include <tool/io/RunMaker.h>

namespace tests {

// What a writer has reached; seen by all processes that come of one.
class Acknowledged {
 public:
  Acknowledged()
      : at_(new (mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                State) {}
  ~Acknowledged() { munmap(at_, sizeof(State)); }
  Acknowledged(const Acknowledged&) = delete;
  Acknowledged& operator=(const Acknowledged&) = delete;

  struct State {
    std::atomic<bool> opened = false;  // run and tune are acknowledged
    std::atomic<std::uint32_t> scans = 0;
    char failure[256] = "";  // why the writer ended, told by whoever calls it
  };
  State* operator->() const { return at_; }

 private:
  State* at_;
};

inline TslBL::RawSpectrum ScanOf(std::uint32_t number) {
  std::vector<double> counts(200 + number % 7 * 150);
  for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<double>(i * i * number % 9973);
  return RawScan(number, counts);
}

inline void WriteAcknowledged(const std::string& file, std::uint32_t scans, const Acknowledged& done) {
  TslTool::RunWriter writer(file, "Fault");
  writer.AddTune(1, DemoTune());
  done->opened = true;
  for (std::uint32_t number = 1; number <= scans; ++number) {
    writer.AddScan(ScanOf(number));
    done->scans = number;
  }
  writer.Finish();
}

// Nothing if all scans that were acknowledged can be read, and at most the one in hand with
// them; else what is wrong. A writer that has acknowledged nothing may leave an empty file.
inline std::string WhatIsLost(const std::string& file, const Acknowledged& done) {
  std::vector<TslBL::RawSpectrum> left;
  try {
    left = ReadRun(file);
  } catch (const TslTool::InputError& error) {
    const bool nothing =
        !done->opened && error.Reason() == "is empty, as a run is whose writer was ended at once";
    return nothing ? "" : error.what();
  }
  if (left.size() < done->scans || left.size() > done->scans + 1)
    return std::to_string(left.size()) + " scans of " + std::to_string(done->scans);
  for (std::uint32_t i = 0; i < left.size(); ++i)
    if (left[i] != ScanOf(i + 1)) return "scan " + std::to_string(i + 1) + " differs";
  return "";
}

}  // namespace tests
