#include <tslbl/curve/PeakDetectParams.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kRetentionTypes[] = {{PeakDetectParams::PeakTop, L"Peak Top"},
                                        {PeakDetectParams::CentroidTopPercent, L"Centroid Top Percent"}};
constexpr CodeText kFindFeatureAlgorithms[] = {{PeakDetectParams::Sequential, L"Sequential"},
                                               {PeakDetectParams::Sorted, L"Sorted"}};

// A limit and its flag: one element in a document, one line of a report.
template <class T>
void DescribeLimit(Archive& ar, const wchar_t* name, bool& inUse, T& value) {
  if (ar.Dumping()) return ar.Line(name, ToWStr(inUse) + L", " + ToText(value));
  if (const auto element = ar.Element(name)) {
    ar.Attribute(L"InUse", inUse);
    ar.Text(name, value);
  }
}

void DescribeLimits(Archive& ar, PeakDetectParams& p) {
  DescribeLimit(ar, L"SN", p.SNInUse, p.SN);
  if (const auto element = ar.Element(L"Threshold"))
    ar.Attribute(ar.Dumping() ? L"Threshold" : L"InUse", p.ThresholdInUse);
  DescribeLimit(ar, L"RelAmpl", p.RelAmplInUse, p.RelAmpl);
  DescribeLimit(ar, L"AbsArea", p.AbsAreaInUse, p.AbsArea);
  DescribeLimit(ar, L"RelArea", p.RelAreaInUse, p.RelArea);
  DescribeLimit(ar, L"FWHMGT", p.FWHMGTInUse, p.FWHMGT);
  DescribeLimit(ar, L"FWHMLT", p.FWHMLTInUse, p.FWHMLT);
  DescribeLimit(ar, L"PeakCnt", p.PeakCntInUse, p.PeakCnt);
  ar(L"MaxValley", p.MaxValley);
}

// The document form: it leaves out what its type makes meaningless, and reading stops at
// the first of its three groups that is missing.
void DescribeDocument(Archive& ar, PeakDetectParams& p) {
  const auto element = ar.Element(L"PeakDetect");
  if (!element) return;
  {
    const auto search = ar.Element(L"Search");
    if (!search) return;
    ar.FlagAttribute(L"Type", p.FullSearch, L"Full", L"Partial");
    if (!p.FullSearch) {
      ar.Attribute(L"Start", p.SearchStart);
      ar.Attribute(L"End", p.SearchEnd);
    }
  }
  DescribeLimits(ar, p);
  {
    const auto retention = ar.Element(L"Retention");
    if (!retention) return;
    ar.EnumAttribute(L"Type", p.RetentionType, {kRetentionTypes});
    if (p.RetentionType == PeakDetectParams::CentroidTopPercent) ar.Text(L"Retention", p.Retention);
  }
  if (ar.Reading()) p.FindFeatureAlgorithm = PeakDetectParams::Sequential;
  ar.Enum(L"FindFeatAlg", p.FindFeatureAlgorithm, {kFindFeatureAlgorithms});
  ar(L"Display", p.Display);
}

}  // namespace

PeakDetectParams PeakDetectParams::DefaultMS() {
  PeakDetectParams p;
  p.Retention = 25.0;
  return p;
}

PeakDetectParams PeakDetectParams::DefaultIC() {
  PeakDetectParams p;
  p.SearchStart = 0.0;
  p.SearchEnd = 1000.0;
  p.FWHMGT = 500.0;
  p.FWHMLT = 1000.0;
  return p;
}

std::wstring PeakDetectParams::ToString(FindFeatureAlgorithms algorithm) {
  return Codes{kFindFeatureAlgorithms}.ToText(algorithm);
}

void Describe(Archive& ar, PeakDetectParams& p) {
  ar.Version(2, "Unknown PeakDetectParams version.");
  if (ar.Xml()) return DescribeDocument(ar, p);
  ar.Flag(L"Search", p.FullSearch, L"Full", L"Partial");
  ar(L"Start", p.SearchStart);
  ar(L"End", p.SearchEnd);
  DescribeLimits(ar, p);
  if (ar.Dumping()) {
    ar.Line(L"Retention", Codes{kRetentionTypes}.ToText(p.RetentionType) + (L", " + ToText(p.Retention)));
  } else {
    ar.Enum(L"RetentionType", p.RetentionType, {kRetentionTypes});
    ar(L"Retention", p.Retention);
  }
  if (ar.Since(2)) ar.Enum(L"FindFeatAlg", p.FindFeatureAlgorithm, {kFindFeatureAlgorithms});
  ar(L"Display", p.Display);
  ar.RequireGood(ar.Since(2) ? "Error reading PeakDetectParams"
                             : "Error reading version 1 of PeakDetectParams");
}

}  // namespace TslBL
