#include <tool/mzml/RewriteMzML.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Printable.h>
#include <tool/frame/Spool.h>
#include <tool/io/MzMLHead.h>
#include <tool/io/SummedOutput.h>
#include <tool/io/XmlScanner.h>
#include <tslbl/Version.h>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace TslTool {
namespace {

constexpr const char* kSoftware = "tslbl_rewriting";
constexpr const char* kProcessing = "tslbl_rewritten";
constexpr unsigned kIndent = 2;
constexpr std::size_t kShown = 100;  // characters of an id in a message

// As it stands before the first element; empty without one.
std::string DeclarationOf(const ByteSource& source) {
  std::string_view head = source.Head();
  constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";
  if (head.starts_with(kUtf8Mark)) head.remove_prefix(kUtf8Mark.size());
  if (!head.starts_with("<?xml")) return "";
  return std::string(head.substr(0, head.find("?>") + 2)) + "\n";
}

// The places of elements, for the index.
class Places {
 public:
  Places(const char* name, const std::string& folder) : name_(name), lines_(folder) {}

  void Add(const std::string& id, std::uint64_t offset) {
    lines_.Write(fmt::format("      <offset idRef=\"{}\">{}</offset>\n", id, offset));
    ++count_;
  }
  std::uint64_t Count() const { return count_; }
  void WriteTo(SummedOutput& output) {
    output.Write(fmt::format("    <index name=\"{}\">\n", name_));
    lines_.ForEachLine([&](std::string_view line) { output.Write(line); });
    output.Write("    </index>\n");
  }

 private:
  const char* name_;
  Spool lines_;
  std::uint64_t count_ = 0;
};

class Rewriting {
 public:
  Rewriting(ByteSource source, const MzMap& map, const std::string& program, const ProcessingMethod& method,
            Output& output)
      : output_(output),
        summed_(output),
        map_(map),
        program_(program),
        method_(method),
        spectra_("spectrum", output.Folder()),
        chromatograms_("chromatogram", output.Folder()) {
    Write(DeclarationOf(source));
    xml_.emplace(std::move(source));
  }

  std::uint64_t Run() {
    for (auto event = xml_->Next(); event != XmlScanner::Event::Finished; event = xml_->Next()) {
      if (event == XmlScanner::Event::Start) {
        Start(std::string(LocalName(xml_->Name())));
      } else {
        End();
      }
    }
    Release();
    return spectra_.Count();
  }

 private:
  std::string Blanks(std::size_t depth) const { return std::string(depth * kIndent, ' '); }

  // What follows the list of processings waits until it is known which of them the spectra had.
  void Write(std::string_view text) {
    if (processings_) {
      waiting_ += text;
    } else if (isSummedUp_) {
      output_.Write(text);
    } else {
      summed_.Write(text);
    }
  }
  void WriteLine(std::size_t depth, std::string_view text) {
    Write(Blanks(depth));
    Write(text);
    Write("\n");
  }

  void Start(const std::string& name) {
    const std::size_t depth = xml_->Depth() - 1;
    if (name == "spectrum") return ReadSpectrum(depth);
    if (name == "chromatogram") return ReadChromatogram(depth);
    if (name == "softwareList") return ReadSoftware(depth);
    if (name == "referenceableParamGroup") return ReadGroup(depth);
    if (name == "dataProcessingList" && !processings_) return HoldProcessings(depth);
    if (name == "spectrumList") return BeginSpectra(depth);
    if (name == "indexList") return WriteIndex();
    if (name == "indexListOffset" || name == "fileChecksum") return static_cast<void>(xml_->ReadElement());
    isEmpty_ = xml_->Tag().ends_with("/>");
    WriteLine(depth, xml_->Tag());
  }
  void End() {
    if (!std::exchange(isEmpty_, false)) WriteLine(xml_->Depth(), fmt::format("</{}>", xml_->Name()));
  }

  template <class Change>
  std::string Changed(std::size_t depth, Change change) {
    const std::string place = xml_->Place() + ", " + Printable(xml_->Attribute("id").value_or(""), kShown);
    try {
      pugi::xml_document document;
      ParseElement(xml_->ReadElement(), document);
      pugi::xml_node element = document.document_element();
      change(element);
      return ElementText(element, static_cast<unsigned>(depth));
    } catch (const InputError&) {
      throw;
    } catch (const std::runtime_error& error) {
      throw InputError(xml_->File(), place, error.what());
    }
  }

  void ReadSpectrum(std::size_t depth) {
    ThrowIfInterrupted();
    const std::string id = xml_->Attribute("id").value_or("");
    const std::string text =
        Changed(depth, [&](pugi::xml_node& spectrum) { ChangeMz(spectrum, groups_, map_); });
    spectra_.Add(id, summed_.Size() + depth * kIndent);
    Write(text);
  }
  void ReadChromatogram(std::size_t depth) {
    const std::string id = xml_->Attribute("id").value_or("");
    Release();
    chromatograms_.Add(id, summed_.Size() + depth * kIndent);
    WriteLine(depth, xml_->ReadElement());
  }
  void ReadSoftware(std::size_t depth) {
    Write(Changed(depth, [&](pugi::xml_node& list) {
      pugi::xml_node software = list.append_child("software");
      software.append_attribute("id") = kSoftware;
      software.append_attribute("version") = TSLBL_VERSION;
      AddTerm(software, Cv::kCustomSoftware, program_);
      TakePrefix(software, list);
      CountOneMore(list);
    }));
  }
  void ReadGroup(std::size_t depth) {
    Write(Changed(depth, [&](pugi::xml_node& group) { groups_.Add(group); }));
  }
  void HoldProcessings(std::size_t depth) {
    const std::string text = Changed(depth, [](pugi::xml_node&) {});
    processingsDepth_ = depth;
    processings_.emplace();
    ParseElement(text, *processings_);
  }

  static void CountOneMore(pugi::xml_node& list) {
    const auto count = ToNumber<std::uint64_t>(list.attribute("count").value());
    if (count) list.attribute("count") = fmt::format("{}", *count + 1).c_str();
  }

  // A copy of what had been done to the spectra, with one thing more.
  void AddProcessing(const std::string& before) {
    pugi::xml_node list = processings_->document_element();
    pugi::xml_node processing = list.find_child_by_attribute("id", before.c_str());
    processing = processing ? list.append_copy(processing) : list.append_child("dataProcessing");
    processing.remove_attribute("id");
    processing.prepend_attribute("id") = kProcessing;
    AddMethod(processing, method_, kSoftware);
    TakePrefix(processing, list);
    CountOneMore(list);
  }

  void BeginSpectra(std::size_t depth) {
    std::string tag(xml_->Tag());
    const auto before = xml_->Attribute("defaultDataProcessingRef");
    if (processings_ && before) {
      AddProcessing(*before);
      const std::size_t at = tag.find(*before, tag.find("defaultDataProcessingRef"));
      tag.replace(at, before->size(), kProcessing);
    }
    Release();
    isEmpty_ = tag.ends_with("/>");
    WriteLine(depth, tag);
  }

  void Release() {
    if (!processings_) return;
    const std::string text =
        ElementText(processings_->document_element(), static_cast<unsigned>(processingsDepth_));
    processings_.reset();
    Write(text);
    Write(std::exchange(waiting_, ""));
  }

  void WriteIndex() {
    xml_->ReadElement();
    std::vector<Places*> lists = {&spectra_};
    if (chromatograms_.Count() > 0) lists.push_back(&chromatograms_);
    const std::uint64_t at = summed_.Size() + kIndent;
    Write(fmt::format("  <indexList count=\"{}\">\n", lists.size()));
    for (Places* list : lists) list->WriteTo(summed_);
    Write(fmt::format("  </indexList>\n  <indexListOffset>{}</indexListOffset>\n  <fileChecksum>", at));
    isSummedUp_ = true;
    Write(summed_.Sum() + "</fileChecksum>\n");
  }

  Output& output_;
  SummedOutput summed_;
  const MzMap& map_;
  std::string program_;
  ProcessingMethod method_;
  std::optional<XmlScanner> xml_;
  MzMLGroups groups_;
  Places spectra_;
  Places chromatograms_;
  bool isEmpty_ = false;     // of the tag in hand
  bool isSummedUp_ = false;  // the checksum has been written
  std::optional<pugi::xml_document> processings_;
  std::size_t processingsDepth_ = 0;
  std::string waiting_;
};

}  // namespace

std::uint64_t RewriteMzML(const std::string& input, const MzMap& map, const std::string& program,
                          const ProcessingMethod& method, Output& output) {
  return Rewriting(ByteSource(input), map, program, method, output).Run();
}

}  // namespace TslTool
