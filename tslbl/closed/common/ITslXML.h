#pragma once
// What a record with a document form can do: write itself as an element and read
// itself from one.

#include <tslbl/Export.h>

namespace TslCommon {

class XMLBuilder;
class XMLParser;

class TSLBL_API ITslXML {
 public:
  virtual ~ITslXML();

  // An absent element leaves the record as it is, an absent child that field.
  virtual void Serialize(XMLParser& parser) = 0;
  virtual void Serialize(XMLBuilder& builder) const = 0;

 protected:
  ITslXML() = default;
  ITslXML(const ITslXML&) = default;
  ITslXML& operator=(const ITslXML&) = default;
};

}  // namespace TslCommon
