#pragma once
// What every stored record can do: write itself to a binary stream, read itself back
// and print itself for a log.

#include <tslbl/Export.h>
#include <string>

namespace TslCommon {

class BinaryReader;
class BinaryWriter;

class TSLBL_API ITslSerial {
 public:
  virtual ~ITslSerial();

  // Replaces `text` with a dump for logs and reports; nothing parses it. The default
  // leaves a record without a dump of its own with an empty text.
  virtual void Serialize(std::wstring& text) const;
  // Throws std::runtime_error if the stream holds no such record.
  virtual void Serialize(BinaryReader& reader) = 0;
  virtual void Serialize(BinaryWriter& writer) const = 0;

 protected:
  ITslSerial() = default;
  ITslSerial(const ITslSerial&) = default;
  ITslSerial& operator=(const ITslSerial&) = default;
};

}  // namespace TslCommon
