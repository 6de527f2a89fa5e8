// Fits of overlapped peaks by this project, Eigen and Ceres. benchmarks/peers/fit builds and runs it.
//   fit DATA PEAKS POINTS groups      makes DATA/PEAKS_POINTS.f64
//   fit DATA PEAKS POINTS SOLVER      fits them: prints microseconds a group, writes DATA/centres.f64
//
// A group is [FWHM, start of the FWHM, truth: centre, height for each peak, start centres, y of each point]. Eigen and
// Ceres get the same model that is true: Gaussians of one width over a level, with the analytic Jacobian.
#include <tslbl/closed/math/overlap/FitPeaks.h>

#include <ceres/ceres.h>

#include <Eigen/Dense>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>
#include <unsupported/Eigen/NonLinearOptimization>

#include "Measure.h"

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;
using Peers::Values;

constexpr int kGroups = 1000;
constexpr double kSteepness = 2.772588722239781;  // 4 ln 2
constexpr double kFwhmPerA3 = 2.3548200450309493;

struct Group {
  int peaks = 0;
  double fwhm = 0;
  double startFwhm = 0;
  Values truth;
  Values starts;
  Values y;
  Values rootWeights;
};

// Two FWHM of level on both sides; peaks 0.7 to 2 FWHM apart, heights within a factor of four, S/N 20 to 200. Starts
// are off by a normal deviation of 0.15 FWHM, the width by up to 15 %.
void Generate(const std::string& path, int peaks, int points) {
  std::mt19937_64 random(static_cast<std::uint64_t>(1000 * peaks + points));
  const auto between = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  std::ofstream file(path, std::ios::binary);
  for (int g = 0; g < kGroups; ++g) {
    Values centres = {2};
    for (int k = 1; k < peaks; ++k) centres.push_back(centres.back() + between(0.7, 2));
    const double fwhm = (points - 1) / (centres.back() + 2);
    const double tallest = std::exp(2 * between(std::log(20.0), std::log(200.0)));
    Values heights(static_cast<std::size_t>(peaks), tallest);
    for (double& height : heights) height *= between(0.25, 1);
    heights[random() % heights.size()] = tallest;
    const double level = between(0, 0.05) * tallest;
    Values record = {fwhm, fwhm * between(0.85, 1.15)};
    for (std::size_t k = 0; k < centres.size(); ++k) record.insert(record.end(), {centres[k] * fwhm, heights[k]});
    for (const double centre : centres)
      record.push_back((centre + std::normal_distribution<double>(0, 0.15)(random)) * fwhm);
    for (int i = 0; i < points; ++i) {
      double mean = level;
      for (std::size_t k = 0; k < centres.size(); ++k) {
        const double u = i / fwhm - centres[k];
        mean += heights[k] * std::exp(-kSteepness * u * u);
      }
      record.push_back(static_cast<double>(std::poisson_distribution<std::int64_t>(std::max(mean, 1e-9))(random)));
    }
    file.write(reinterpret_cast<const char*>(record.data()),
               static_cast<std::streamsize>(record.size() * sizeof(double)));
  }
}

Group Read(const std::string& path, int peaks, int points, int index) {
  const auto size = static_cast<std::size_t>(2 + 3 * peaks + points);
  const Values record = Peers::Load(path, static_cast<std::size_t>(index) * size, size);
  const auto at = [&](int i) { return record.begin() + i; };
  return {peaks, record[0], record[1], {at(2), at(2 + 2 * peaks)}, {at(2 + 2 * peaks), at(2 + 3 * peaks)},
          {at(2 + 3 * peaks), record.end()}, Values(static_cast<std::size_t>(points), 1.0)};
}

// Level, then centre and height of each peak, then the FWHM.
struct Model {
  const Group& group;
  int Parameters() const { return 2 * group.peaks + 2; }
  int Points() const { return static_cast<int>(group.y.size()); }

  VectorXd Start() const {
    VectorXd p(Parameters());
    const Values& y = group.y;
    const std::size_t n = y.size();
    p[0] = std::min(y[0] + y[1] + y[2], y[n - 1] + y[n - 2] + y[n - 3]) / 3;
    for (int k = 0; k < group.peaks; ++k) {
      const double start = std::clamp(group.starts[static_cast<std::size_t>(k)], 0.0, static_cast<double>(n - 1));
      p[1 + 2 * k] = start;
      p[2 + 2 * k] = std::max(1.0, y[static_cast<std::size_t>(std::lround(start))] - p[0]);
    }
    p[Parameters() - 1] = group.startFwhm;
    return p;
  }

  // Element (i, k) of the Jacobian at jacobian[i * rowStep + k * columnStep].
  void Evaluate(const double* p, double* residuals, double* jacobian, int rowStep, int columnStep) const {
    const double fwhm = p[Parameters() - 1];
    for (int i = 0; i < Points(); ++i) {
      const double weight = group.rootWeights[static_cast<std::size_t>(i)];
      double value = p[0];
      double byWidth = 0;
      for (int k = 0; k < group.peaks; ++k) {
        const double u = (i - p[1 + 2 * k]) / fwhm;
        const double shape = std::exp(-kSteepness * u * u);
        const double slope = 2 * kSteepness * p[2 + 2 * k] * shape * u / fwhm;
        value += p[2 + 2 * k] * shape;
        byWidth += slope * u;
        if (jacobian == nullptr) continue;
        jacobian[i * rowStep + (1 + 2 * k) * columnStep] = weight * slope;
        jacobian[i * rowStep + (2 + 2 * k) * columnStep] = weight * shape;
      }
      residuals[i] = weight * (value - group.y[static_cast<std::size_t>(i)]);
      if (jacobian == nullptr) continue;
      jacobian[i * rowStep] = weight;
      jacobian[i * rowStep + (Parameters() - 1) * columnStep] = weight * byWidth;
    }
  }
};

struct EigenModel : Model {
  int inputs() const { return Parameters(); }
  int values() const { return Points(); }
  int operator()(const VectorXd& p, VectorXd& residuals) const {
    Evaluate(p.data(), residuals.data(), nullptr, 0, 0);
    return 0;
  }
  int df(const VectorXd& p, MatrixXd& jacobian) const {
    VectorXd residuals(Points());
    Evaluate(p.data(), residuals.data(), jacobian.data(), 1, Points());
    return 0;
  }
};

Values CentresOf(const VectorXd& p, int peaks) {
  Values centres;
  for (int k = 0; k < peaks; ++k) centres.push_back(p[1 + 2 * k]);
  std::sort(centres.begin(), centres.end());
  return centres;
}

Values FitByEigen(const Group& group) {
  EigenModel model{{group}};
  VectorXd p = model.Start();
  Eigen::LevenbergMarquardt<EigenModel> fit(model);
  fit.parameters.maxfev = 200;
  fit.parameters.ftol = fit.parameters.xtol = 1e-8;
  const int status = fit.minimize(p);
  return status >= 1 && status <= 3 ? CentresOf(p, group.peaks) : Values{};
}

struct CeresModel : ceres::CostFunction {
  explicit CeresModel(const Group& group) : model{group} {
    set_num_residuals(model.Points());
    mutable_parameter_block_sizes()->push_back(model.Parameters());
  }
  bool Evaluate(const double* const* p, double* residuals, double** jacobians) const override {
    model.Evaluate(p[0], residuals, jacobians != nullptr ? jacobians[0] : nullptr, model.Parameters(), 1);
    return true;
  }
  Model model;
};

Values FitByCeres(const Group& group) {
  CeresModel cost(group);
  VectorXd p = cost.model.Start();
  ceres::Problem::Options owning;
  owning.cost_function_ownership = ceres::DO_NOT_TAKE_OWNERSHIP;
  ceres::Problem problem(owning);
  problem.AddResidualBlock(&cost, nullptr, p.data());
  ceres::Solver::Options options;
  options.linear_solver_type = ceres::DENSE_QR;
  options.max_num_iterations = 100;
  options.function_tolerance = 1e-8;
  options.logging_type = ceres::SILENT;
  ceres::Solver::Summary summary;
  ceres::Solve(options, &problem, &summary);
  return summary.termination_type == ceres::CONVERGENCE ? CentresOf(p, group.peaks) : Values{};
}

Values FitByTslbl(const Group& group, TslMath::FitMethod method) {
  static Values x;
  x.resize(group.y.size());
  std::iota(x.begin(), x.end(), 0.0);
  std::vector<std::int32_t> apexes;
  for (const double start : group.starts)
    apexes.push_back(static_cast<std::int32_t>(std::lround(std::clamp(start, 0.0, x.back()))));
  const auto fit =
      TslMath::FitOverlap(method, {x, group.y, apexes, group.y.front(), group.startFwhm / kFwhmPerA3});
  Values centres;
  for (std::size_t k = 0; fit && k < apexes.size(); ++k) centres.push_back(fit->sum.Centroid(k));
  return centres;
}

Values Fit(const Group& group, const std::string& solver) {
  if (solver.starts_with("eigen")) return FitByEigen(group);
  if (solver.starts_with("ceres")) return FitByCeres(group);
  return FitByTslbl(group, solver == "tslbl-hj" ? TslMath::FitMethod::HookeJeeves
                                                : TslMath::FitMethod::LevenbergMarquardt);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 5) throw std::invalid_argument("usage: fit DATA PEAKS POINTS groups|SOLVER");
  const std::string data = arguments[1];
  const int peaks = std::atoi(arguments[2]);
  const int points = std::atoi(arguments[3]);
  const std::string solver = arguments[4];
  const std::string path = data + "/" + arguments[2] + "_" + arguments[3] + ".f64";
  if (solver == "groups") return Generate(path, peaks, points), 0;
  std::ofstream out(data + "/centres.f64", std::ios::binary);
  Values times;
  for (int index = 0; index < kGroups; ++index) {
    Group group = Read(path, peaks, points, index);
    if (solver.ends_with("poisson"))
      for (std::size_t i = 0; i < group.y.size(); ++i)
        group.rootWeights[i] = 1 / std::sqrt(std::max(group.y[i], 1.0));
    const double begin = Peers::Microseconds();
    Values centres = Fit(group, solver);
    times.push_back(Peers::Microseconds() - begin);
    centres.resize(static_cast<std::size_t>(peaks), std::nan(""));
    out.write(reinterpret_cast<const char*>(centres.data()), static_cast<std::streamsize>(8 * centres.size()));
  }
  std::printf("%f\n", Peers::Median(times));
  return out.flush() ? 0 : 1;
}
