#include <tool/commands/average/WholeRun.h>

#include <tool/frame/InputError.h>
#include <filesystem>
#include <memory>

namespace TslTool {
namespace {

void Rename(const std::string& from, const std::string& to) {
  std::error_code failure;
  std::filesystem::rename(from, to, failure);
  if (failure) throw InputError(to, "", "cannot be written: " + failure.message());
}

}  // namespace

void WriteWholeRun(const std::string& file, const std::string& title,
                   const std::function<void(RunWriter&)>& fill) {
  std::error_code unknown;
  if (std::filesystem::exists(file, unknown)) throw InputError(file, "", "exists already");
  const std::string part = file + ".part";
  RemoveRun(part);
  auto writer = std::make_unique<RunWriter>(part, title);
  try {
    fill(*writer);
    writer->Finish();
    writer.reset();
    Rename(part, file);
  } catch (...) {
    writer.reset();
    RemoveRun(part);
    throw;
  }
}

}  // namespace TslTool
