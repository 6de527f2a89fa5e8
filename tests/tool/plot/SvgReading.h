#pragma once
// What a picture holds, for the tests.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include <tool/plot/Svg.h>

namespace tests {

inline bool IsDocument(const std::string& svg) { return pugi::xml_document().load_string(svg.c_str()); }

inline std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// The elements of a picture without its page, as text.
inline std::string ElementsOf(const TslTool::Svg& svg) {
  const std::string document = svg.Document();
  const std::string page = "fill=\"#fff\"/>\n";
  const std::size_t start = document.find(page) + page.size();
  return document.substr(start, document.rfind("</svg>") - start);
}

// The values of an attribute of all elements of a name, in their order, those inside others too.
inline std::vector<std::string> AttributesOf(const std::string& svg, const std::string& element,
                                             const std::string& attribute) {
  pugi::xml_document document;
  document.load_string(svg.c_str());
  std::vector<std::string> values;
  for (const auto& found : document.select_nodes(("//" + element).c_str()))
    values.emplace_back(found.node().attribute(attribute.c_str()).value());
  return values;
}

// Points as "1,2 3,4 - 5,6"; a dash is a gap.
inline std::string TextOf(const std::vector<TslTool::Point>& points) {
  std::ostringstream text;
  for (const auto& [x, y] : points) {
    text << (text.str().empty() ? "" : " ");
    if (std::isnan(x))
      text << '-';
    else
      text << x << ',' << y;
  }
  return text.str();
}

// With TSLBL_PICTURES=FOLDER in the environment the picture is written there, to be looked at.
inline void ShowPicture(const std::string& name, const std::string& svg) {
  if (const char* folder = std::getenv("TSLBL_PICTURES"))
    std::ofstream(std::string(folder) + "/" + name + ".svg") << svg;
}

}  // namespace tests
