#include <tool/io/DocumentCheck.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tslbl/closed/common/Text.h>
#include <charconv>
#include <cmath>
#include <map>
#include <string_view>

namespace TslTool {
namespace {

constexpr std::size_t kLongestPlace = 200;

bool IsNumber(const std::string& text, double& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

bool SameValue(const std::string& written, const std::string& taken) {
  if (TslCommon::EqualsIgnoreCase(TslCommon::FromUtf8(written), TslCommon::FromUtf8(taken))) return true;
  double a = 0.0;
  double b = 0.0;
  if (!IsNumber(written, a) || !std::isfinite(a)) return false;
  if (IsNumber(taken, b)) return std::abs(a - b) <= 1e-5 * std::abs(a);
  return taken == (a != 0.0 ? "true" : "false");
}

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// What came so far of the elements of one name.
struct Seen {
  int number = 0;
  pugi::xml_node twin;
};

// The next element of `taken` with the name of `child`. Entries that are kept in an order of
// their own are found by their attribute "Name" or "Id".
pugi::xml_node TwinOf(const pugi::xml_node& child, const pugi::xml_node& taken, Seen& seen) {
  seen.twin = ++seen.number == 1 ? taken.child(child.name()) : seen.twin.next_sibling(child.name());
  for (const char* key : {"Name", "Id"}) {
    const char* name = child.attribute(key).value();
    if (*name == '\0' || std::string_view(seen.twin.attribute(key).value()) == name) continue;
    if (const pugi::xml_node same = taken.find_child_by_attribute(child.name(), key, name)) return same;
  }
  return seen.twin;
}

// With its number, if there are several of its name.
std::string PlaceOf(const pugi::xml_node& child, int number) {
  const std::string name = child.name();
  const bool isOne = number == 1 && !child.next_sibling(child.name());
  return isOne ? name : name + "[" + std::to_string(number) + "]";
}

class DocumentCheck {
 public:
  DocumentCheck(const std::string& file, const std::function<std::string(const DocumentValue&)>& refuse)
      : file_(file), refuse_(refuse) {}

  void Compare(const pugi::xml_node& written, const pugi::xml_node& taken, const std::string& place) const {
    for (const pugi::xml_attribute attribute : written.attributes()) {
      const pugi::xml_attribute twin = taken.attribute(attribute.name());
      if (!twin) Refuse(place, "unknown attribute \"" + Printable(attribute.name()) + "\"");
      Judge(place + "@" + attribute.name(), attribute.value(), twin.value());
    }
    Judge(place, written.child_value(), taken.child_value());
    std::map<std::string_view, Seen> all;
    for (const pugi::xml_node child : written.children()) {
      if (child.type() != pugi::node_element) continue;
      Seen& seen = all[child.name()];
      const pugi::xml_node twin = TwinOf(child, taken, seen);
      const char* what = taken.child(child.name()) ? "one element too many: \"" : "unknown element \"";
      if (!twin) Refuse(place, what + Printable(child.name()) + "\"");
      Compare(child, twin, std::string(place).append("/").append(PlaceOf(child, seen.number)));
    }
  }

 private:
  void Judge(const std::string& place, const char* written, const char* taken) const {
    const std::string reason = refuse_({place, Trimmed(written), Trimmed(taken)});
    if (!reason.empty()) Refuse(place, reason);
  }
  [[noreturn]] void Refuse(const std::string& place, const std::string& reason) const {
    throw InputError(file_, Printable(place, kLongestPlace), reason);
  }

  const std::string& file_;
  const std::function<std::string(const DocumentValue&)>& refuse_;
};

}  // namespace

std::string RefuseOther(const DocumentValue& value) {
  if (SameValue(value.written, value.taken)) return "";
  return "\"" + Printable(value.written) + "\" is not a value for it";
}

void CheckDocument(const std::string& file, const pugi::xml_node& written, const pugi::xml_node& taken,
                   const std::function<std::string(const DocumentValue&)>& refuse) {
  DocumentCheck(file, refuse).Compare(written, taken, written.name());
}

}  // namespace TslTool
