#pragma once
// Takes patterns off a peak list, the one that explains most first. That order tells a charge from its double
// and its half: either would leave peaks over that it should have explained.
//
// Each peak's best pattern stands in a queue; one whose peaks another has changed since is laid anew when its
// turn comes: M. Minoux, Accelerated greedy algorithms for maximizing submodular set functions, 1978.
#include <tslbl/closed/engines/resolved/PatternMatch.h>

#include <queue>

namespace TslMath {

class EnvelopeSearch {
 public:
  // All are referred to; `remaining` is what is left of each peak, and goes down.
  EnvelopeSearch(const IsotopeList& list, PatternMatch& match, std::vector<double>& remaining);

  // In the order in which they were found, at most a thousand.
  std::vector<Envelope> All();

 private:
  struct Candidate {
    Envelope envelope;
    std::size_t anchor;
    std::size_t taken;  // how many envelopes were taken when it was laid

    bool operator<(const Candidate& other) const { return envelope.evidence < other.envelope.evidence; }
  };

  void Enter(std::size_t anchor);
  bool IsCurrent(const Candidate& entry) const;
  void Take(const Envelope& envelope);

  const IsotopeList& list_;
  PatternMatch& match_;
  std::vector<double>& remaining_;
  std::vector<std::size_t> changed_;  // by which envelope each peak was changed last, counted from 1
  std::priority_queue<Candidate> queue_;
  std::vector<Envelope> taken_;
};

}  // namespace TslMath
