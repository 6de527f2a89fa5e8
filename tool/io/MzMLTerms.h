#pragma once
// The terms of the vocabularies PSI-MS and UO that are written, and how they stand in an element.

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace TslTool {

struct CvTerm {
  std::string_view accession;
  std::string_view name;
};

namespace Cv {

inline constexpr CvTerm kMassSpectrum = {"MS:1000294", "mass spectrum"};
inline constexpr CvTerm kMs1Spectrum = {"MS:1000579", "MS1 spectrum"};
inline constexpr CvTerm kMsnSpectrum = {"MS:1000580", "MSn spectrum"};
inline constexpr CvTerm kCentroidSpectrum = {"MS:1000127", "centroid spectrum"};
inline constexpr CvTerm kProfileSpectrum = {"MS:1000128", "profile spectrum"};
inline constexpr CvTerm kMsLevel = {"MS:1000511", "ms level"};
inline constexpr CvTerm kPositiveScan = {"MS:1000130", "positive scan"};
inline constexpr CvTerm kNegativeScan = {"MS:1000129", "negative scan"};
inline constexpr CvTerm kBasePeakMz = {"MS:1000504", "base peak m/z"};
inline constexpr CvTerm kBasePeakIntensity = {"MS:1000505", "base peak intensity"};
inline constexpr CvTerm kTotalIonCurrent = {"MS:1000285", "total ion current"};
inline constexpr CvTerm kLowestMz = {"MS:1000528", "lowest observed m/z"};
inline constexpr CvTerm kHighestMz = {"MS:1000527", "highest observed m/z"};
inline constexpr CvTerm kNoCombination = {"MS:1000795", "no combination"};
inline constexpr CvTerm kMeanOfSpectra = {"MS:1000575", "mean of spectra"};
inline constexpr CvTerm kScanStartTime = {"MS:1000016", "scan start time"};

inline constexpr CvTerm kMzArray = {"MS:1000514", "m/z array"};
inline constexpr CvTerm kIntensityArray = {"MS:1000515", "intensity array"};
inline constexpr CvTerm kSignalToNoiseArray = {"MS:1000517", "signal to noise array"};
inline constexpr CvTerm kOtherArray = {"MS:1000786", "non-standard data array"};
inline constexpr CvTerm kFloat64 = {"MS:1000523", "64-bit float"};
inline constexpr CvTerm kZlib = {"MS:1000574", "zlib compression"};

inline constexpr CvTerm kFileFormat = {"MS:1000560", "mass spectrometer file format"};
inline constexpr CvTerm kMzMLFormat = {"MS:1000584", "mzML format"};
inline constexpr CvTerm kTextFormat = {"MS:1001369", "text format"};
inline constexpr CvTerm kScanNumberOnly = {"MS:1000776", "scan number only nativeID format"};
inline constexpr CvTerm kIndexOnly = {"MS:1000774", "multiple peak list nativeID format"};
inline constexpr CvTerm kSpectrumOnly = {"MS:1000777", "spectrum identifier nativeID format"};
inline constexpr CvTerm kSha1 = {"MS:1000569", "SHA-1"};
inline constexpr CvTerm kCustomSoftware = {"MS:1000799", "custom unreleased software tool"};

inline constexpr CvTerm kInstrumentModel = {"MS:1000031", "instrument model"};
inline constexpr CvTerm kIonizationType = {"MS:1000008", "ionization type"};
inline constexpr CvTerm kQuadrupole = {"MS:1000081", "quadrupole"};
inline constexpr CvTerm kDetectorType = {"MS:1000026", "detector type"};

inline constexpr CvTerm kNormalization = {"MS:1001484", "intensity normalization"};
inline constexpr CvTerm kSmoothing = {"MS:1000592", "smoothing"};
inline constexpr CvTerm kBaselineReduction = {"MS:1000593", "baseline reduction"};
inline constexpr CvTerm kLowIntensityRemoval = {"MS:1000594", "low intensity data point removal"};
inline constexpr CvTerm kDataFiltering = {"MS:1001486", "data filtering"};
inline constexpr CvTerm kPeakPicking = {"MS:1000035", "peak picking"};
inline constexpr CvTerm kHeightPeakPicking = {"MS:1000802", "height peak picking"};
inline constexpr CvTerm kCalibration = {"MS:1001485", "m/z calibration"};
inline constexpr CvTerm kConversion = {"MS:1000544", "Conversion to mzML"};

inline constexpr CvTerm kMzUnit = {"MS:1000040", "m/z"};
inline constexpr CvTerm kCounts = {"MS:1000131", "number of detector counts"};
inline constexpr CvTerm kCountsPerSecond = {"MS:1000814", "counts per second"};
inline constexpr CvTerm kSecond = {"UO:0000010", "second"};

}  // namespace Cv

// A <cvParam>; in a valid file all of an element stand before its <userParam>s.
void AddTerm(pugi::xml_node& parent, const CvTerm& term, const std::string& value = "");
void AddTerm(pugi::xml_node& parent, const CvTerm& term, const std::string& value, const CvTerm& unit);
void AddUserParam(pugi::xml_node& parent, const std::string& name, const std::string& value);

// A child with the attribute "count", which tells how many children of its own it will have.
pugi::xml_node AddList(pugi::xml_node& parent, const char* name, std::size_t count);

// The element as UTF-8, indented by two blanks a level from `depth` on, with the end of its last line.
std::string ElementText(const pugi::xml_node& element, unsigned depth);

}  // namespace TslTool
