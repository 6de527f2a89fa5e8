#pragma once
// What the compared programs share: reading the spectra, timing, writing the peaks.
//
// Times are CPU times of the thread, since the machine may have other work.

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <stdexcept>
#include <string>
#include <vector>

namespace Peers {

using Values = std::vector<double>;

inline Values Load(const std::string& path, std::size_t first, std::size_t count) {
  Values values(count);
  std::ifstream file(path, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(first * sizeof(double)));
  const auto bytes = static_cast<std::streamsize>(count * sizeof(double));
  if (!file.read(reinterpret_cast<char*>(values.data()), bytes))
    throw std::runtime_error(path + ": too short");
  return values;
}

inline double Microseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

inline double Median(Values values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

inline double TimeToCopy(const Values& values) {
  static Values place;
  place = values;
  const double begin = Microseconds();
  std::memcpy(place.data(), values.data(), values.size() * sizeof(double));
  asm volatile("" : : "r"(place.data()) : "memory");
  return Microseconds() - begin;
}

// PROGRAM DATA SPECTRA ROUNDS PEAKS.tsv CHAIN: runs a chain and prints copy and chain in microseconds.
// `Chain(name)` makes one, or throws; `Load(axis, counts)` brings a spectrum into its form, `Run()` is what
// is timed, `Centres()` gives the m/z of the peaks.
template <class Chain>
int Main(int count, char** arguments) {
  constexpr std::size_t kPoints = 59901;
  if (count != 6) throw std::invalid_argument("usage: PROGRAM DATA SPECTRA ROUNDS PEAKS.tsv CHAIN");
  const std::string data = arguments[1];
  const auto spectra = static_cast<std::size_t>(std::atoi(arguments[2]));
  const int rounds = std::atoi(arguments[3]);
  const Values axis = Load(data + "/axis.f64", 0, kPoints);
  std::ofstream peaks(arguments[4]);
  peaks << "spectrum\tmz\n" << std::fixed << std::setprecision(6);
  Chain chain(arguments[5]);
  Values copies;
  Values chains;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < spectra; ++i) {
      const Values counts = Load(data + "/counts.f64", i * kPoints, kPoints);
      chain.Load(axis, counts);
      copies.push_back(TimeToCopy(counts));
      const double begin = Microseconds();
      chain.Run();
      chains.push_back(Microseconds() - begin);
      if (round > 0) continue;
      for (const double mz : chain.Centres()) peaks << i << '\t' << mz << '\n';
    }
  }
  std::printf("%f %f\n", Median(copies), Median(chains));
  return peaks.flush() ? 0 : 1;
}

}  // namespace Peers
