#pragma once
// Which columns of a table are m/z and amplitude: by their names, or as the user says.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

// What the user says: each a name or a 1-based number. Empty: as the file tells.
struct ColumnChoice {
  std::string mz;
  std::string amplitude;

  bool IsGiven() const { return !mz.empty(); }
  bool IsByNumber() const;
  bool operator==(const ColumnChoice&) const = default;
};

// "MZ,AMPLITUDE"; throws UsageError. An empty text gives no choice.
ColumnChoice ParseColumnChoice(const std::string& option, std::string_view text);

// The 1-based number that a part of a choice is; 0 if it is a name.
std::size_t ColumnNumber(const std::string& choice);

// 0-based.
struct ColumnPair {
  std::size_t mz = 0;
  std::size_t amplitude = 1;
};

// The two columns that a choice means, or, without one, those that are called m/z and amplitude, mass and
// intensity, x and y or the like, in any case, units in brackets behind them. Nothing if one has no such
// name, or several have one that is as good.
std::optional<ColumnPair> FindColumns(const std::vector<std::string_view>& names, const ColumnChoice& choice);

// The same for a table of two columns of which only one need have such a name.
std::optional<ColumnPair> FindColumnsOfTwo(const std::vector<std::string_view>& names);

// The column that numbers the spectra of a table of several, if one has such a name.
std::optional<std::size_t> FindScanColumn(const std::vector<std::string_view>& names);

// Whether a name is known as one of m/z, or of an amplitude.
bool IsMzName(std::string_view name);
bool IsAmplitudeName(std::string_view name);

// Whether it is the name of what is no m/z, such as a time (OtherAxis.h).
bool IsNoMz(std::string_view name);

// "Mass" (1), "Intensity" (2): for messages.
std::string ListColumns(const std::vector<std::string_view>& names);

}  // namespace TslTool
