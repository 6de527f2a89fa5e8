#pragma once
// One molecule at several charge states, each of them one peak of a list.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslMath {

struct SeriesMember {
  std::int32_t charge;
  std::size_t peak;  // index in the list
  double mass;       // Da, neutral: charge * (m/z - mass of the carrier)
  double deviation;  // Da, of this mass from the series'
};

struct ChargeSeries {
  double mass = 0;               // Da, neutral: the mean of the members' masses, weighed by their precision
  double standardDeviation = 0;  // Da, of the members' masses; 0 of one member
  double standardError = 0;      // Da, of `mass`, as far as the members' scatter tells; 0 of less than three
  double score = 0;              // logarithm of how much likelier a series is than chance
  std::vector<SeriesMember> members;  // ascending charge
};

}  // namespace TslMath
