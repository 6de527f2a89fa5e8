#include <tool/PeakFile.h>

#include <tool/io/InputError.h>
#include <tslbl/spectrum/PeakTable.h>

namespace TslTool {

bool PeakFile::CanResume(const std::string& format, const std::string& path) {
  return format == "tsv" && !path.empty();
}

PeakFile::PeakFile(const std::string& format, const std::string& path)
    : writer_(MakePeakWriter(format)),
      output_(path, CanResume(format, path) ? Output::Beside::Resumable : Output::Beside::Passing) {}

std::uint32_t PeakFile::Resume() {
  if (output_.Part().empty()) return 0;
  resumed_ = FindTableEnd(output_.Part(), writer_->Head());
  if (!resumed_) return 0;
  output_.GoOnBehind(resumed_->bytes);
  return resumed_->scan;
}

std::string PeakFile::Part(const LoadedSpectrum& loaded) const {
  return writer_->Part(loaded, TslBL::CreateMZPeakTable(*loaded.spectrum));
}

void PeakFile::RequireSame(const std::string& part) {
  if (part == resumed_->rows) return;
  output_.KeepPart();
  throw InputError(output_.Part(), "scan " + std::to_string(resumed_->scan),
                   "holds other peaks than this input and chain give; without --resume it is begun anew");
}

void PeakFile::Write(const std::string& part) {
  if (first_ && resumed_) {
    RequireSame(part);
  } else {
    output_.Write(first_ ? writer_->Head() : writer_->Between());
  }
  first_ = false;
  output_.Write(part);
}

void PeakFile::Commit() {
  output_.Write(writer_->Tail());
  output_.Commit();
}

std::string PeakFile::KeepForLater() {
  if (first_ && !resumed_) return "";
  output_.KeepPart();
  return output_.Part();
}

}  // namespace TslTool
