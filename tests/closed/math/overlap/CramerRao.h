#pragma once
// How well the peaks of a simulated group can be told at best.
#include <Eigen/Dense>
#include <cmath>
#include <numbers>
#include <vector>

#include "SimulatedGroup.h"

namespace tests {

struct Bound {
  double centre;
  double area;
};

// Cramer-Rao bounds for Poisson counts of Gaussians of one unknown width over an unknown level, from the
// truth. For groups whose peaks tail or differ in width they are those of the nearest such group.
inline std::vector<Bound> CramerRaoBounds(const SimulatedGroup& group) {
  const auto peaks = static_cast<Eigen::Index>(group.Peaks());
  const Eigen::Index width = 2 * peaks;
  Eigen::MatrixXd information = Eigen::MatrixXd::Zero(width + 2, width + 2);
  const double w = group.widths[0];
  for (std::size_t i = 0; i < group.x.size(); ++i) {
    Eigen::VectorXd slope = Eigen::VectorXd::Zero(width + 2);
    for (Eigen::Index k = 0; k < peaks; ++k) {
      const auto at = static_cast<std::size_t>(k);
      const double u = (group.x[i] - group.centres[at]) / w;
      slope[k] = std::exp(-0.5 * u * u);
      slope[peaks + k] = group.heights[at] * slope[k] * u / w;
      slope[width] += slope[peaks + k] * u;
    }
    slope[width + 1] = 1;
    information += slope * slope.transpose() / group.mean[i];
  }
  const Eigen::MatrixXd covariance = information.inverse();
  std::vector<Bound> bounds;
  for (Eigen::Index k = 0; k < peaks; ++k) {
    Eigen::VectorXd area = Eigen::VectorXd::Zero(width + 2);
    area[k] = w;
    area[width] = group.heights[static_cast<std::size_t>(k)];
    const double squared = 2 * std::numbers::pi * area.dot(covariance * area);
    bounds.push_back({std::sqrt(covariance(peaks + k, peaks + k)), std::sqrt(squared)});
  }
  return bounds;
}

}  // namespace tests
