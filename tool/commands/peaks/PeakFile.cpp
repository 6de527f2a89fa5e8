#include <tool/commands/peaks/PeakFile.h>

#include <tool/commands/peaks/PeakWriter.h>
#include <tool/frame/InputError.h>
#include <filesystem>
#include <fstream>
#include <utility>

namespace TslTool {

bool PeakFile::CanResume(const std::string& format, const std::string& path) {
  return format == "tsv" && !IsStandardOutput(path);
}

bool PeakFile::IsWhole(const std::string& format, const std::string& path) {
  const std::string head = MakePeakWriter(format)->Head();
  std::string begin(head.size(), '\0');
  std::ifstream in(path, std::ios::binary);
  in.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  return in && begin == head && !std::filesystem::exists(path + ".part");
}

PeakFile::PeakFile(std::unique_ptr<SpectrumWriter> writer, const std::string& format, const std::string& path)
    : writer_(std::move(writer)),
      output_(path, CanResume(format, path) ? Output::Beside::Resumable : Output::Beside::Temporary) {}

const std::optional<TableEnd>& PeakFile::Resume() {
  if (!output_.Part().empty()) resumed_ = FindTableEnd(output_.Part(), writer_->Head());
  if (resumed_) output_.ResumeAt(resumed_->bytes);
  return resumed_;
}

void PeakFile::RefuseToResume(std::uint32_t scan, const std::string& reason) {
  output_.KeepPart();
  throw InputError(output_.Part(), "scan " + std::to_string(scan),
                   reason + "; without --resume it starts over");
}

std::string PeakFile::Part(const LoadedSpectrum& loaded) const { return writer_->PartOf(loaded); }

void PeakFile::RequireSame(const std::string& part) {
  if (part != resumed_->rows)
    RefuseToResume(resumed_->scan, "holds other peaks than this input and chain give");
}

void PeakFile::Write(const std::string& part) {
  if (first_ && resumed_) {
    RequireSame(part);
    output_.Write(part);
  } else {
    writer_->Write(output_, part, first_);
  }
  first_ = false;
}

void PeakFile::Commit() {
  writer_->Finish(output_);
  output_.Commit();
}

std::string PeakFile::KeepForLater() {
  if (output_.Part().empty() || (first_ && !resumed_)) return "";
  output_.KeepPart();
  return output_.Part();
}

}  // namespace TslTool
