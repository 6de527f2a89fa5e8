#pragma once
// The time program of the diverter valve: from which time after the start of a method on the
// valve stands where.
//
//   DiverterValveMethod program;
//   program.AddState(timebase::MSEC(0), DiverterValve(DiverterValve::kToWaste));
//   program.AddState(timebase::MSEC(60000), DiverterValve(DiverterValve::kToSource));
//   auto entry = program.QFirstState();   // of a program that is not empty
//   do Use(entry.first, entry.second); while (program.QNextState(entry));
//
// Whether a program suits its method is checked by MethodRules. A value; its cursor is part of
// it, so that walking changes it. One thread at a time.

#include <tslbl/Export.h>
#include <tslbl/closed/common/DiverterValve.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/records/Common.h>
#include <map>
#include <utility>

namespace TslCommon {
class BinaryReader;
class BinaryWriter;
class XMLBuilder;
class XMLParser;
}  // namespace TslCommon

namespace TslBL {

class TSLBL_API DiverterValveMethod {
 public:
  DiverterValveMethod() = default;
  // The cursor of a copy stands on the first state.
  DiverterValveMethod(const DiverterValveMethod& other);
  DiverterValveMethod& operator=(const DiverterValveMethod& other);
  ~DiverterValveMethod() = default;

  // The states and their times; not the cursor.
  bool operator==(const DiverterValveMethod& other) const { return states_ == other.states_; }

  // From `start` on the valve stands in this state. One that was set for that very time is replaced.
  void AddState(const timebase::MSEC& start, const DiverterValve& state);

  // Sets the cursor on the first state and returns it. Throws std::out_of_range without states.
  std::pair<timebase::MSEC, DiverterValve> QFirstState();
  // Moves the cursor on. False, with `out` left alone, behind the last state.
  bool QNextState(std::pair<timebase::MSEC, DiverterValve>& out);
  bool IsEmpty() const { return states_.empty(); }

  // The word 1, the number of states, and of each, in the order of time, its start as a signed
  // number and its state. Reading another word than 1 takes nothing more and changes nothing.
  void Serialize(BinaryReader& reader);
  void Serialize(BinaryWriter& writer) const;
  // A list "ValveMethod" of elements "Entry" with "Start", in milliseconds, and "State", "Source"
  // or "Waste"; of two entries of one time the first counts. Throws XMLResultException for an
  // entry that lacks something and for another state, std::bad_cast for a start that is no whole
  // number; the entries before it then stay.
  void Serialize(XMLParser& parser);
  void Serialize(XMLBuilder& builder) const;

 private:
  using States = std::map<timebase::MSEC, DiverterValve>;

  States states_;
  States::const_iterator cursor_ = states_.cbegin();
};

}  // namespace TslBL
