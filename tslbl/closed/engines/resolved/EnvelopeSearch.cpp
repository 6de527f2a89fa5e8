#include <tslbl/closed/engines/resolved/EnvelopeSearch.h>

#include <algorithm>

namespace TslMath {
namespace {

constexpr std::size_t kMostEnvelopes = 1000;
constexpr double kNegligibleRest = 0.3;  // of the peak
// Far from the top the average molecule has isotopes some times too weak: such a rest is no other species.
constexpr double kMismatch = 2.0;     // of what is expected there
constexpr double kFarFromTop = 0.05;  // of what is expected at the top

}  // namespace

EnvelopeSearch::EnvelopeSearch(const IsotopeList& list, PatternMatch& match, std::vector<double>& remaining)
    : list_(list), match_(match), remaining_(remaining), changed_(list.Count(), 0) {}

void EnvelopeSearch::Enter(std::size_t anchor) {
  Candidate entry{{}, anchor, taken_.size()};
  if (remaining_[anchor] > 0.0 && match_.Best(anchor, entry.envelope)) queue_.push(std::move(entry));
}

bool EnvelopeSearch::IsCurrent(const Candidate& entry) const {
  return std::ranges::all_of(entry.envelope.peaks,
                             [&](const PatternPeak& peak) { return changed_[peak.peak] <= entry.taken; });
}

void EnvelopeSearch::Take(const Envelope& envelope) {
  taken_.push_back(envelope);
  const double top = std::ranges::max(envelope.peaks, {}, &PatternPeak::expected).expected;
  for (const PatternPeak& peak : envelope.peaks) {
    const ListedPeak& listed = list_[peak.peak];
    const double rest = remaining_[peak.peak] - peak.expected;
    const double mismatch = std::min(kMismatch * peak.expected, kFarFromTop * top);
    const bool isSeen = rest >= std::max({kNegligibleRest * listed.intensity, listed.leastSeen, mismatch});
    remaining_[peak.peak] = isSeen ? rest : 0.0;
    changed_[peak.peak] = taken_.size();
  }
}

std::vector<Envelope> EnvelopeSearch::All() {
  for (std::size_t anchor = 0; anchor < list_.Count(); ++anchor) Enter(anchor);
  while (!queue_.empty() && taken_.size() < kMostEnvelopes) {
    const Candidate entry = queue_.top();
    queue_.pop();
    if (IsCurrent(entry))
      Take(entry.envelope);
    else
      Enter(entry.anchor);
  }
  return std::move(taken_);
}

}  // namespace TslMath
