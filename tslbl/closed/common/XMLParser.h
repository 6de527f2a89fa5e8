#pragma once
// Reads a document element by element, the mirror of XMLBuilder.
//
// A parser stands on one element, at first on the document itself. StartNode descends
// into a child; called again with the same name it takes the next child of that name, so
// that equal siblings are read in their order. A document is one element, at most 256
// deep; there is no network, no DOCTYPE and so no entity but the five of XML. Nothing here
// throws but StartRequiredNode. One thread at a time.

#include <tslbl/Export.h>
#include <memory>
#include <string>
#include <string_view>

namespace TslCommon {

class TSLBL_API XMLParser {
 public:
  XMLParser();
  ~XMLParser();
  XMLParser(const XMLParser&) = delete;
  XMLParser& operator=(const XMLParser&) = delete;

  // Both replace the document. False if the file cannot be read or is not well formed;
  // the parser then holds an empty document and QLoadError() says why.
  bool LoadFile(const std::wstring& path);
  bool LoadText(const std::wstring& xml);
  // Reason and place of the last failure to load, such as
  // "line 3, column 7: Start-end tags mismatch".
  const std::wstring& QLoadError() const;

  bool StartNode(const wchar_t* name);
  // Throws XMLResultException if the child is absent.
  void StartRequiredNode(const wchar_t* name);
  void EndNode();
  // The text of a child element; `text` is left alone if there is none.
  bool QNode(const wchar_t* name, std::wstring& text) const;
  bool QAttribute(const wchar_t* name, std::wstring& text) const;
  // The text of the element on which the parser stands.
  std::wstring QText() const;
  // As StartNode; `count` receives the number of child elements of the list.
  bool StartList(const wchar_t* name, int& count);
  void EndList();

 private:
  // How the bytes of a document stand for characters: as its declaration says, or in UTF-8
  // whatever that says, where a text was wide before.
  enum class Coding { OfTheDocument, Utf8 };
  bool Accept(std::string_view bytes, Coding coding);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace TslCommon
