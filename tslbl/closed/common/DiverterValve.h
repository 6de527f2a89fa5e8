#pragma once
// The state of the diverter valve between the column and the ion source.

#include <tslbl/Export.h>
#include <cstdint>
#include <string>

namespace TslCommon {

class TSLBL_API DiverterValve {
 public:
  static constexpr std::uint32_t kToSource = 0;
  static constexpr std::uint32_t kToWaste = 1;
  static constexpr std::uint32_t kUnknown = 2;

  explicit DiverterValve(std::uint32_t state = kUnknown) : state_(state) {}

  std::uint32_t State() const { return state_; }
  bool operator==(const DiverterValve&) const = default;

  // "Source", "Waste", or "Unknown" for any other state.
  static std::wstring ToStr(const DiverterValve& valve);

 private:
  std::uint32_t state_;
};

}  // namespace TslCommon
