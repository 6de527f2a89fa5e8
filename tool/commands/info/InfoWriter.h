#pragma once
// What is told of a file as text: a head, a part for each spectrum as it is read, and a tail.

#include <tool/commands/info/FileFacts.h>
#include <tslbl/method/Method.h>
#include <tslbl/tune/Tune.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

// What is known before the first spectrum.
struct FileHead {
  std::string file;
  std::string format;
  bool isRun = false;
  std::string title = {};                           // of a run
  std::map<std::uint32_t, TslBL::Tune> tunes = {};  // likewise
  std::map<std::uint32_t, std::size_t> axes =
      {};                                    // points of tunes whose scans have another axis than theirs
  std::optional<TslBL::Method> method = {};  // of a run that a method acquired
};

// What is known behind the last one.
struct FileTail {
  FileFacts facts;
  Chromatograms chromatograms;
  double pointsAcross = 0.0;  // a peak; 0 if no peak was seen
};

class InfoWriter {
 public:
  explicit InfoWriter(FileHead head) : head_(std::move(head)) {}
  virtual ~InfoWriter() = default;

  virtual std::string Head() const { return ""; }
  virtual std::string Part(const ScanFacts&) const { return ""; }
  virtual std::string Between() const { return ""; }  // two parts
  virtual std::string Tail(const FileTail&) const { return ""; }

 protected:
  const FileHead& About() const { return head_; }

 private:
  FileHead head_;
};

// The formats: "table" for reading, "tsv" and "json" for programs.
const std::vector<std::string>& InfoFormats();
std::unique_ptr<InfoWriter> MakeInfoWriter(const std::string& format, const FileHead& head);

// The one of the form "table".
std::unique_ptr<InfoWriter> MakeInfoTable(const FileHead& head);

}  // namespace TslTool
