#pragma once
// Builds a document in memory, element by element.
//
//   XMLBuilder builder;
//   builder.StartNode(L"Smooth");
//   builder.WNode(L"Passes", L"1");
//   builder.EndNode();
//   builder.QXML();   // <Smooth><Passes>1</Passes></Smooth>
//
// All operations are const, as the document is behind a handle. Names and text may
// hold any character; text survives as it is, line ends, blanks and control characters
// included. One thread at a time.

#include <tslbl/Export.h>
#include <memory>
#include <string>
#include <vector>

namespace TslCommon {

class TSLBL_API XMLBuilder {
 public:
  XMLBuilder();
  ~XMLBuilder();
  XMLBuilder(const XMLBuilder&) = delete;
  XMLBuilder& operator=(const XMLBuilder&) = delete;

  // The document so far, without declaration, indented by two blanks a level.
  std::wstring QXML() const;

  void StartNode(const wchar_t* name) const;
  // Does nothing if no element is open.
  void EndNode() const;
  // A child element with text.
  void WNode(const wchar_t* name, const std::wstring& text) const;
  // An attribute, and the text, of the open element.
  void WAttribute(const wchar_t* name, const std::wstring& text) const;
  void WText(const std::wstring& text) const;
  void StartList(const wchar_t* name) const;
  void EndList() const;
  // A child "Profile" with the attribute "Count" and the children "X" and "Y", whose
  // texts hold the values with full precision, separated by blanks.
  void WProfileNode(const std::vector<double>& x, const std::vector<double>& y) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace TslCommon
