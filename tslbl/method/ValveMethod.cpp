#include <tslbl/method/ValveMethod.h>

#include <boost/lexical_cast/try_lexical_convert.hpp>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/closed/common/XMLResultException.h>
#include <cstdint>
#include <stdexcept>
#include <typeinfo>

namespace TslBL {
namespace {

// Where applications above expect a failure of a document to come from.
constexpr const wchar_t* kSource = L"ValveMethod";
constexpr const wchar_t* kReadMethodNode = L"`anonymous-namespace'::ReadMethodNode";
constexpr const wchar_t* kDiverterValveFromText = L"`anonymous-namespace'::DiverterValveFromText";
constexpr unsigned kLineOfEntry = 90;
constexpr unsigned kLineOfStart = 93;
constexpr unsigned kLineOfState = 97;
constexpr unsigned kLineOfText = 77;

class BadCast final : public std::bad_cast {
 public:
  const char* what() const noexcept override { return "bad cast"; }
};

[[noreturn]] void ThrowMissing(unsigned line, const wchar_t* element) {
  throw CreateXmlResult(kSource, kReadMethodNode, line, kElementMissing,
                        FillText(LoadTslCommonResourceStr(kElementMissing), element));
}

std::wstring RequiredText(const XMLParser& parser, unsigned line, const wchar_t* element) {
  std::wstring text;
  if (!parser.QNode(element, text)) ThrowMissing(line, element);
  return text;
}

timebase::MSEC StartFromText(const std::wstring& text) {
  std::int32_t start = 0;
  if (!boost::conversion::try_lexical_convert(text, start)) throw BadCast();
  return timebase::MSEC(start);
}

DiverterValve DiverterValveFromText(const std::wstring& text) {
  const DiverterValve toSource(DiverterValve::kToSource);
  const DiverterValve toWaste(DiverterValve::kToWaste);
  static const std::wstring source = DiverterValve::ToStr(toSource);
  static const std::wstring waste = DiverterValve::ToStr(toWaste);
  if (text == source) return toSource;
  if (text == waste) return toWaste;
  throw CreateXmlResult(kSource, kDiverterValveFromText, kLineOfText, kValueNotValid,
                        L"Expected valve state (" + source + L"," + waste + L") but instead got " + text);
}

std::pair<timebase::MSEC, DiverterValve> ReadMethodNode(XMLParser& parser) {
  if (!parser.StartNode(L"Entry")) ThrowMissing(kLineOfEntry, L"Entry");
  const timebase::MSEC start = StartFromText(RequiredText(parser, kLineOfStart, L"Start"));
  const DiverterValve state = DiverterValveFromText(RequiredText(parser, kLineOfState, L"State"));
  parser.EndNode();
  return {start, state};
}

}  // namespace

DiverterValveMethod::DiverterValveMethod(const DiverterValveMethod& other) : states_(other.states_) {}

DiverterValveMethod& DiverterValveMethod::operator=(const DiverterValveMethod& other) {
  states_ = other.states_;
  cursor_ = states_.cbegin();
  return *this;
}

void DiverterValveMethod::AddState(const timebase::MSEC& start, const DiverterValve& state) {
  states_.insert_or_assign(start, state);
}

std::pair<timebase::MSEC, DiverterValve> DiverterValveMethod::QFirstState() {
  cursor_ = states_.cbegin();
  if (IsEmpty()) throw std::out_of_range("The valve program has no states.");
  return *cursor_;
}

bool DiverterValveMethod::QNextState(std::pair<timebase::MSEC, DiverterValve>& out) {
  if (cursor_ == states_.cend() || ++cursor_ == states_.cend()) return false;
  out = *cursor_;
  return true;
}

void DiverterValveMethod::Serialize(BinaryWriter& writer) const {
  writer << std::uint32_t{1} << static_cast<std::uint32_t>(states_.size());
  for (const auto& [start, state] : states_) writer << start.count << state;
}

void DiverterValveMethod::Serialize(BinaryReader& reader) {
  std::uint32_t form = 0;
  reader >> form;
  if (form != 1) return;
  std::uint32_t count = 0;
  reader >> count;
  States read;
  for (; count > 0 && reader.Good(); --count) {
    timebase::MSEC start;
    DiverterValve state;
    reader >> start.count >> state;
    read.emplace(start, state);
  }
  if (!reader.Good()) return;
  states_ = std::move(read);
  cursor_ = states_.cbegin();
}

void DiverterValveMethod::Serialize(XMLBuilder& builder) const {
  builder.StartList(L"ValveMethod");
  for (const auto& [start, state] : states_) {
    builder.StartNode(L"Entry");
    builder.WNode(L"Start", ToText(start.count));
    builder.WNode(L"State", DiverterValve::ToStr(state));
    builder.EndNode();
  }
  builder.EndList();
}

void DiverterValveMethod::Serialize(XMLParser& parser) {
  states_.clear();
  cursor_ = states_.cbegin();
  int count = 0;
  if (!parser.StartList(L"ValveMethod", count)) return;
  for (; count > 0; --count) states_.insert(ReadMethodNode(parser));
  cursor_ = states_.cbegin();
  parser.EndList();
}

}  // namespace TslBL
