#pragma once
// A table of expected values that a script in tests/oracles wrote: CSV in tests/data with named columns. An
// empty cell is NaN.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

class OracleTable {
 public:
  explicit OracleTable(const std::string& name) {
    std::ifstream file(std::string(TSLBL_TEST_DATA) + "/" + name);
    EXPECT_TRUE(file) << name << " cannot be read";
    std::string line;
    std::getline(file, line);
    names_ = Cells(line);
    while (std::getline(file, line)) AddRow(Cells(line));
  }

  const std::vector<std::string>& Names() const { return names_; }
  const std::vector<double>& operator[](const std::string& name) const { return columns_.at(name); }

 private:
  static std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, ',');) cells.push_back(cell);
    return cells;
  }

  void AddRow(std::vector<std::string> cells) {
    cells.resize(names_.size());
    for (std::size_t k = 0; k < cells.size(); ++k) {
      columns_[names_[k]].push_back(cells[k].empty() ? std::numeric_limits<double>::quiet_NaN()
                                                     : std::stod(cells[k]));
    }
  }

  std::vector<std::string> names_;
  std::map<std::string, std::vector<double>> columns_;
};

}  // namespace tests
