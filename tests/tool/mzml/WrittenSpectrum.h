#pragma once
// What was written of a spectrum, as it is read again.

#include <pugixml.hpp>
#include <string>
#include <vector>

#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLHead.h>
#include <tool/mzml/SpectrumElement.h>

namespace tests {

// A spectrum that was written, as an element that is read.
class Written {
 public:
  Written(const TslTool::LoadedSpectrum& loaded, const TslTool::SpectrumArrays& arrays) {
    TslTool::ParseElement(text_ = TslTool::SpectrumElement(loaded, arrays, 4), document_);
  }
  const std::string& Text() const { return text_; }
  pugi::xml_node Element() const { return document_.document_element(); }
  TslTool::MzMLTerms Terms() const { return TslTool::MzMLGroups().TermsOf(Element()); }
  // Of a term; empty if there is none.
  std::string Value(const char* accession) const {
    const TslTool::MzMLTerms terms = Terms();
    const TslTool::MzMLTerm* term = terms.Find(accession);
    return term ? term->value : "";
  }
  pugi::xml_node Array(const char* accession, const std::string& name = "") const {
    for (const pugi::xml_node& array : Element().child("binaryDataArrayList").children())
      for (const pugi::xml_node& param : array.children("cvParam"))
        if (param.attribute("accession").value() == std::string(accession) &&
            param.attribute("value").value() == name)
          return array;
    return {};
  }
  std::vector<double> Values(const char* accession, const std::string& name = "") const {
    const pugi::xml_node array = Array(accession, name);
    return TslTool::DecodeArray(array, TslTool::MzMLGroups().TermsOf(array), name,
                                Element().attribute("defaultArrayLength").as_uint())
        .values;
  }

 private:
  std::string text_;
  pugi::xml_document document_;
};

}  // namespace tests
