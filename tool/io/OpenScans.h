#pragma once
// Opens a file of spectra with the reader that its content asks for.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <tool/io/ByteSource.h>
#include <tool/io/Scan.h>

namespace TslTool {

enum class FileKind { Empty, Xml, Sqlite, Text };

// By the first bytes; a hundred are enough. What is none of the others is text.
FileKind KindOf(std::string_view head);

// The same for the first bytes of a file, unpacked if it is gzip. Throws InputError if it cannot be read.
FileKind KindOfFile(const std::string& file);

// Whether a file is an SQLite database, as runs are. A pipe never is one, and is left unread.
bool IsDatabase(const std::string& file);

// A regular file, which can be read a second time; a pipe cannot.
bool CanBeReadAgain(const std::string& file);

// A foreign file, opened, of which nothing has been read.
struct ForeignFile {
  ByteSource source;
  bool isMzML = false;  // else text
  std::vector<std::string> warnings;
};

// mzML if the name ends in .mzML or .mzML.gz (in any case) or if the content is XML, else text with columns;
// both may be gzip, whatever the name. A gzip file is verified first, see VerifyGzip. Throws InputError for a
// missing or unreadable file, a folder, an empty file and what is of another kind (ForeignKinds.h); what is
// wrong further inside, Next tells.
ForeignFile OpenForeign(const std::string& file);

// Opens it with its reader.
std::unique_ptr<ScanSource> OpenScans(const std::string& file);

}  // namespace TslTool
