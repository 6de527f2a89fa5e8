#pragma once
// Walks an XML file tag by tag, in bounded memory, and sees that it is well formed on the way.
//
// It knows nothing of any vocabulary: it frames elements, so that a reader of one element can be given its
// text whole, and it notices what such a reader cannot: a file that is cut off, tags that do not pair, a '<'
// inside an attribute, content after the root. Source: W3C, Extensible Markup Language (XML) 1.0, 2008.
// A DOCTYPE is refused, so nothing outside the file is ever fetched or expanded. Entities are left as
// written.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tool/io/ByteSource.h>

namespace TslTool {

class XmlScanner {
 public:
  enum class Event { Start, End, Finished };

  // The largest element that ReadElement returns; a larger one is an InputError.
  static constexpr std::size_t kMaxElementBytes = std::size_t{1} << 30;

  // Takes the source from its first byte on. UTF-8 and encodings that contain ASCII.
  explicit XmlScanner(ByteSource source);

  // The next start or end tag; an empty element ("<a/>") gives both. Throws InputError with the line.
  Event Next();

  // Of the tag that Next has just returned. Views are valid until the next call of Next or ReadElement.
  const std::string& Name() const { return name_; }
  std::string_view Tag() const { return std::string_view(buffer_).substr(tagBegin_, position_ - tagBegin_); }
  std::optional<std::string> Attribute(std::string_view name) const;  // as written, entities not replaced

  // How many elements enclose the place behind the tag.
  std::size_t Depth() const { return open_.size(); }

  // After a Start: reads on to the element's end and returns its text from '<' to '>'. The next call of Next
  // returns what follows the element.
  std::string_view ReadElement();

  const std::string& File() const { return source_.File(); }
  std::string Place() const;  // "line N" of the current position

 private:
  [[noreturn]] void Fail(const std::string& reason) const;
  bool Fill();
  bool Have(std::size_t count);
  std::size_t Find(std::string_view text, std::size_t from);
  bool SkipText();
  bool SkipMarkup();
  void SkipPast(std::string_view end, const char* what);
  std::size_t TagEnd();
  void CheckStartTag(std::string_view tag) const;
  Event Close(std::string_view name);
  Event OpenTag();
  Event CloseTag();

  ByteSource source_;
  std::string buffer_;
  std::size_t position_ = 0;  // in buffer_: behind the current tag
  std::size_t tagBegin_ = 0;
  std::optional<std::size_t> keepFrom_;  // bytes from here on stay in buffer_
  std::uint64_t linesDropped_ = 0;
  std::string name_;
  std::vector<std::string> open_;
  bool closePending_ = false;
  bool rootSeen_ = false;
};

}  // namespace TslTool
