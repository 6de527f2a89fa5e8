#pragma once
// The document by which the library and the engines of charge state deconvolution talk: a root CSDecon with
// at most one element of each kind below it, as closed/engines/SeriesEngine.h and MassPlotEngine.h tell. Real
// numbers have the shortest text that reads back to the same double.
//
// Failures are std::runtime_error: "Error reading XML content." for a text that is no document, "Error
// reading XML content" for a value in it that is missing or no number of its kind, "Error writing XML
// content." without a root to write to, "Error creating XML document.", "Error writing XML content" and
// "Error clearing XML content" for memory that runs out.
//
// For the sources of the library; not part of its interface.

#include <tslbl/chargestate/DeconExchange.h>
#include <memory>
#include <string>
#include <vector>

namespace TslBL {

class DeconXMLParser {
 public:
  // A document with an empty root.
  DeconXMLParser();
  // The document of a text.
  explicit DeconXMLParser(const std::wstring& text);
  DeconXMLParser(const DeconXMLParser&) = delete;
  DeconXMLParser& operator=(const DeconXMLParser&) = delete;
  virtual ~DeconXMLParser();

  // Goes back to an empty root.
  void Clear();
  // Replaces the document; after a failure it has no root.
  void WText(const std::wstring& text);
  std::wstring QText() const;

  // Each adds an element of its name. One that there is already throws "Only one ResPrefs node is allowed.",
  // with that name.
  void WResPrefs(const ResPrefs& prefs);
  void WUnresPrefs(const UnresPrefs& prefs);
  void WMZPeaks(const std::vector<PeakRow>& peaks);
  void WSeriesPeaks(double avgMass, const std::vector<std::uint32_t>& peakIds);
  void WPlot(const std::vector<PlotPoint>& points);
  void WPlot(const std::vector<PlotPoint>& points, double adductMass, std::uint32_t charge);

  // All series in their order.
  std::vector<FoundSeries> QSeries() const;
  // The points of the plot. Throws "No Plot node found." without one.
  std::vector<PlotPoint> QPlot() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace TslBL
