#include <tool/io/XmlScanner.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>

#include <algorithm>
#include <utility>

namespace TslTool {

namespace {

constexpr std::size_t kChunk = 256 * std::size_t{1024};
constexpr std::size_t kMaxDepth = 256;

// memchr is faster than counting every character, since arrays are long lines.
std::uint64_t CountLines(std::string_view text) {
  std::uint64_t count = 0;
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) ++count;
  return count;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameChar(char c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 && !IsBlank(c); }

std::string_view TakeName(std::string_view& rest) {
  if (rest.empty() || !IsNameStart(rest.front())) return {};
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsNameChar);
  const std::string_view name = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(name.size());
  return name;
}

bool SkipBlanks(std::string_view& rest) {
  const std::size_t before = rest.size();
  while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
  return rest.size() != before;
}

// One `name="value"`; an empty name means that it is none.
std::pair<std::string_view, std::string_view> TakeAttribute(std::string_view& rest) {
  const std::string_view name = TakeName(rest);
  SkipBlanks(rest);
  if (name.empty() || rest.empty() || rest.front() != '=') return {};
  rest.remove_prefix(1);
  SkipBlanks(rest);
  if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return {};
  const std::size_t end = rest.find(rest.front(), 1);
  if (end == std::string_view::npos) return {};
  const std::string_view value = rest.substr(1, end - 1);
  rest.remove_prefix(end + 1);
  return {name, value};
}

// What stands between '<' and '>' or '/>' of a start tag.
std::string_view Inside(std::string_view tag) {
  tag.remove_prefix(1);
  tag.remove_suffix(tag.ends_with("/>") ? 2 : 1);
  return tag;
}

}  // namespace

XmlScanner::XmlScanner(ByteSource source) : source_(std::move(source)) {
  const std::string_view head = source_.Head();
  if (head.starts_with("\xff\xfe") || head.starts_with("\xfe\xff")) {
    Fail("the text is UTF-16; only UTF-8 and 8-bit encodings are read");
  }
  if (Have(3) && std::string_view(buffer_).starts_with("\xef\xbb\xbf")) position_ = 3;
}

void XmlScanner::Fail(const std::string& reason) const { throw InputError(File(), Place(), reason); }

std::string XmlScanner::Place() const {
  const auto lines = CountLines(std::string_view(buffer_).substr(0, position_));
  return "line " + std::to_string(linesDropped_ + lines + 1);
}

// Appends a chunk to the buffer, dropping first what is no longer needed.
bool XmlScanner::Fill() {
  const std::size_t drop = keepFrom_.value_or(std::min(position_, tagBegin_));
  linesDropped_ += CountLines(std::string_view(buffer_).substr(0, drop));
  buffer_.erase(0, drop);
  position_ -= drop;
  tagBegin_ -= drop;
  if (keepFrom_) keepFrom_ = 0;
  if (buffer_.size() > kMaxElementBytes) Fail("an element larger than 1 GiB");

  const std::size_t old = buffer_.size();
  buffer_.resize(old + kChunk);
  const std::size_t count = source_.Read(buffer_.data() + old, kChunk);
  buffer_.resize(old + count);
  return count > 0;
}

bool XmlScanner::Have(std::size_t count) {
  while (buffer_.size() - position_ < count) {
    if (!Fill()) return false;
  }
  return true;
}

// Offset from position_ of the first `text` at or behind offset `from`, npos if the file has no more.
std::size_t XmlScanner::Find(std::string_view text, std::size_t from) {
  for (;;) {
    const std::size_t at = buffer_.find(text, position_ + from);
    if (at != std::string::npos) return at - position_;
    const std::size_t seen = buffer_.size() - position_;
    from = std::max(from, seen - std::min(seen, text.size() - 1));
    if (!Fill()) return std::string::npos;
  }
}

// Goes to the next '<'. False at the end of the file.
bool XmlScanner::SkipText() {
  for (;;) {
    const std::size_t at = std::min(buffer_.find('<', position_), buffer_.size());
    if (open_.empty()) {
      const auto begin = buffer_.begin() + static_cast<std::ptrdiff_t>(position_);
      const auto end = buffer_.begin() + static_cast<std::ptrdiff_t>(at);
      const auto foreign = std::find_if_not(begin, end, IsBlank);
      if (foreign != end) {
        position_ = static_cast<std::size_t>(foreign - buffer_.begin());
        const auto shown = Printable(std::string_view(buffer_).substr(position_, at - position_));
        Fail((rootSeen_ ? "text after the root element: \"" : "not XML: the file begins with \"") + shown +
             "\"");
      }
    }
    position_ = at;
    if (at < buffer_.size()) return true;
    tagBegin_ = position_;
    if (!Fill()) return false;
  }
}

void XmlScanner::SkipPast(std::string_view end, const char* what) {
  const std::size_t at = Find(end, 0);
  if (at == std::string::npos) Fail(std::string("the file ends inside ") + what);
  position_ += at + end.size();
}

// Passes over a comment, a processing instruction or CDATA. False if a tag stands here.
bool XmlScanner::SkipMarkup() {
  Have(9);
  const std::string_view rest = std::string_view(buffer_).substr(position_);
  if (rest.starts_with("<?")) {
    SkipPast("?>", "a processing instruction");
  } else if (rest.starts_with("<!--")) {
    position_ += 4;
    SkipPast("-->", "a comment");
  } else if (rest.starts_with("<![CDATA[") && !open_.empty()) {
    SkipPast("]]>", "a CDATA section");
  } else if (rest.starts_with("<!")) {
    Fail("a declaration that is not read here: \"" + Printable(rest.substr(0, 9)) + "\"");
  } else {
    return false;
  }
  return true;
}

// Offset behind the '>' of the tag at position_; a '>' inside quotes does not end it.
std::size_t XmlScanner::TagEnd() {
  char quote = 0;
  for (std::size_t i = 1;; ++i) {
    if (!Have(i + 1)) {
      Fail("the file ends inside the tag \"" + Printable(std::string_view(buffer_).substr(position_)) + "\"");
    }
    const char c = buffer_[position_ + i];
    if (c == '<') Fail(quote ? "'<' inside an attribute value" : "'<' inside a tag");
    if (IsControl(c)) Fail("a control character inside a tag");
    if (quote ? c == quote : (c == '"' || c == '\'')) {
      quote = quote ? '\0' : c;
    } else if (c == '>' && !quote) {
      return i + 1;
    }
  }
}

void XmlScanner::CheckStartTag(std::string_view tag) const {
  std::string_view rest = Inside(tag);
  if (TakeName(rest).empty()) Fail("a tag without a name: \"" + Printable(tag) + "\"");
  for (;;) {
    const bool blank = SkipBlanks(rest);
    if (rest.empty()) return;
    const std::string_view at = rest;
    if (!blank || TakeAttribute(rest).first.empty()) {
      Fail("no attribute of the form name=\"value\": \"" + Printable(at) + "\"");
    }
  }
}

std::optional<std::string> XmlScanner::Attribute(std::string_view name) const {
  std::string_view rest = Inside(Tag());
  TakeName(rest);
  while (SkipBlanks(rest) && !rest.empty()) {
    const auto [key, value] = TakeAttribute(rest);
    if (key == name) return std::string(value);
  }
  return std::nullopt;
}

XmlScanner::Event XmlScanner::Close(std::string_view name) {
  if (open_.empty() || open_.back() != name) {
    Fail("</" + Printable(name) + "> closes " +
         (open_.empty() ? std::string("nothing") : "<" + Printable(open_.back()) + ">"));
  }
  name_.assign(name);
  open_.pop_back();
  return Event::End;
}

XmlScanner::Event XmlScanner::OpenTag() {
  CheckStartTag(Tag());
  std::string_view rest = Inside(Tag());
  name_.assign(TakeName(rest));
  if (open_.empty() && rootSeen_) Fail("<" + Printable(name_) + "> follows the end of the root element");
  if (open_.size() >= kMaxDepth) Fail("elements nested deeper than " + std::to_string(kMaxDepth));
  rootSeen_ = true;
  open_.push_back(name_);
  closePending_ = Tag().ends_with("/>");
  return Event::Start;
}

XmlScanner::Event XmlScanner::CloseTag() {
  std::string_view rest = Tag().substr(2, Tag().size() - 3);
  const std::string_view name = TakeName(rest);
  SkipBlanks(rest);
  if (name.empty() || !rest.empty()) Fail("not an end tag: \"" + Printable(Tag()) + "\"");
  return Close(name);
}

XmlScanner::Event XmlScanner::Next() {
  if (std::exchange(closePending_, false)) return Close(std::string(name_));
  do {
    tagBegin_ = position_;
    if (!SkipText()) {
      if (!open_.empty()) Fail("the file ends inside <" + Printable(open_.back()) + ">");
      if (!rootSeen_) Fail("no XML element");
      return Event::Finished;
    }
    tagBegin_ = position_;
  } while (SkipMarkup());
  position_ += TagEnd();
  return Tag()[1] == '/' ? CloseTag() : OpenTag();
}

std::string_view XmlScanner::ReadElement() {
  const std::size_t outside = open_.size() - 1;
  keepFrom_ = tagBegin_;
  while (open_.size() > outside) Next();
  const std::size_t begin = *std::exchange(keepFrom_, std::nullopt);
  return std::string_view(buffer_).substr(begin, position_ - begin);
}

}  // namespace TslTool
