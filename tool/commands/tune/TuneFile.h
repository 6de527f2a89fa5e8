#pragma once
// A tune as a file: a document, or the binary record.

#include <tool/io/DocumentCheck.h>
#include <tool/io/RecordFile.h>
#include <tslbl/tune/Tune.h>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace TslTool {

using TuneForm = RecordForm;

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

// For documents that hold tunes. `taken` is the element of a tune as it was read, and is given the elements
// of the other kind of probe, as each is read under either.
void AddOtherProbe(pugi::xml_node taken, TslBL::Tune tune);
// As RefuseOther; takes a probe by its name alone.
std::string RefuseInTune(const DocumentValue& value);
// Elements that the element `written` of a tune lacks, as "Tune/Control/Skimmer". Lists may be short.
std::vector<std::string> MissingInTune(const pugi::xml_node& written, const pugi::xml_node& taken);

}  // namespace TslTool
