#pragma once
// An acquisition method as a file: a document, or the binary record.

#include <tool/io/RecordFile.h>
#include <tslbl/method/Method.h>
#include <string>
#include <vector>

namespace TslTool {

struct MethodFile {
  TslBL::Method method;
  RecordForm form;
  // Elements that the tunes of a document lack, as "tune 2: Tune/Control/Skimmer"; they count as 0 or empty.
  std::vector<std::string> missing;
};

// Older binary versions are made current. Throws InputError for a file that cannot be read, that holds no
// method or more than one, for an element or a value of a document that would not be taken as it stands, and
// for a number that is none.
MethodFile LoadMethod(const std::string& file);

}  // namespace TslTool
