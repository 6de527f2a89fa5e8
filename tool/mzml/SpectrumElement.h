#pragma once
// A spectrum as an element <spectrum> of an mzML file.

#include <tool/io/EncodeArray.h>
#include <tool/io/MzMLTerms.h>
#include <tool/io/SpectrumSource.h>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

struct NamedArray {
  ArrayKind kind;
  std::vector<double> values;
};

// The arrays of a spectrum, all of one length, by ascending m/z.
struct SpectrumArrays {
  CvTerm representation;  // centroid or profile
  std::vector<double> mz;
  std::vector<double> intensity;
  CvTerm unit;  // of the intensity
  CvTerm combination = Cv::kNoCombination;
  std::vector<std::pair<std::string, std::string>> told = {};  // user parameters, by their names
  std::vector<NamedArray> more = {};
};

// By the level; a spectrum without one is a mass spectrum.
const CvTerm& SpectrumType(int msLevel);

// Its id in the file: its own, or "scan=N" where it has none or one that the format does not allow.
std::string IdFor(const LoadedSpectrum& loaded);

// Without the attribute "index". Of `loaded` only its head is read. Throws std::runtime_error with the reason
// if an m/z or intensity is not finite.
std::string SpectrumElement(const LoadedSpectrum& loaded, const SpectrumArrays& arrays, unsigned depth);

}  // namespace TslTool
