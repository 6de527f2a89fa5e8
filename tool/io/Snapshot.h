#pragma once
// A database as it stands, in whatever state its writer has left it.

#include <tool/io/Sqlite.h>
#include <memory>
#include <string>

namespace TslTool {

// Opens a database for reading, with a transaction begun: until it is closed, all that had been
// committed by now is read and nothing else, whoever writes meanwhile. The file stays as it is.
//
// A killed writer can leave what only a writer may settle: a journal that is to be rolled back,
// or a log where its index cannot be made, as in a folder that is read-only. That is done in a
// copy of the files, which takes their room in the folder for temporary files until the
// database is closed.
//
// Throws std::runtime_error with the file's name.
std::unique_ptr<Database> OpenSnapshot(const std::string& file);

}  // namespace TslTool
