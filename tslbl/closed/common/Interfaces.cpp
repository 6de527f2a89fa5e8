#include <tslbl/closed/common/ITslSerial.h>
#include <tslbl/closed/common/ITslXML.h>

namespace TslCommon {

ITslSerial::~ITslSerial() = default;
void ITslSerial::Serialize(std::wstring& text) const { text.clear(); }

ITslXML::~ITslXML() = default;

}  // namespace TslCommon
