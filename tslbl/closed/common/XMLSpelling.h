#pragma once
// Names and text as the program knows them, and as a document may spell them. Whatever
// they hold, the document is one that every XML reader takes.
//
// A character that XML forbids, such as the blank in the name "Baseline Subtract" or a
// control character in a text, is written as _xHHHH_ with its code in hexadecimal, and so
// is an underscore that would read as the start of such a code.

#include <string>
#include <string_view>

namespace TslCommon {

// A name of an element or attribute. Different names have different spellings.
std::string EncodeXmlName(std::wstring_view name);

// Text of an element and value of an attribute with their markup escaped: line ends,
// leading and trailing blanks come back as they were. Text of blanks alone does, too.
std::string EncodeXmlText(std::wstring_view text);
std::string EncodeXmlAttribute(std::wstring_view text);

// What a text or a value stands for, once a reader has resolved the markup.
std::wstring DecodeXmlText(std::string_view read);

}  // namespace TslCommon
