#pragma once
// A tune as a file: a document, or the binary record.

#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

enum class TuneForm { Xml, Binary };

struct TuneFile {
  TslBL::Tune tune;
  TuneForm form;
  // Elements that a document lacks, as "Tune/Control/Skimmer"; they count as 0 or empty.
  std::vector<std::string> missing;
};

// Older binary versions are made current. Throws InputError for a file that cannot be
// read, that holds no tune or more than one, for an element of a document that no tune has,
// for a value that would not be taken as it stands, and for a number that is none.
TuneFile LoadTune(const std::string& file);

std::string TuneBytes(const TslBL::Tune& tune, TuneForm form);

// What a tune is after being written in a form and read again: a document keeps six digits
// of a number, and not the entrance lens.
TslBL::Tune ThroughForm(const TslBL::Tune& tune, TuneForm form);

// The form that a file's name asks for: a document if it ends in ".xml".
TuneForm FormOfName(const std::string& file);

}  // namespace TslTool
