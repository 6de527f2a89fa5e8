#pragma once
// A spectrum with the result of its charge state deconvolution: the parameters, the series that were found,
// and a curve over mass. CSDecon.h makes the result and CSDeconEdit.h changes it; here is what is asked of
// it.
//
// A series is known by its key (CSSeries) or its position among `Series`; a query of one that there is not
// says so. A value, copied deep; one thread at a time may change it.

#include <tslbl/Export.h>
#include <tslbl/chargestate/CSPeakIndicators.h>
#include <tslbl/chargestate/CSSeriesInfo.h>
#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

class TSLBL_API DeconSpectrum : public Spectrum {
 public:
  ChargeStateParams CSParams;  // of the last run
  std::vector<CSSeriesInfo> Series;
  std::vector<double> MassX;  // mass axis of the deconvolved curve, ascending
  std::vector<double> MassY;  // its amplitudes

  DeconSpectrum() = default;
  // A spectrum that has not been deconvolved.
  DeconSpectrum(const Spectrum& spectrum);

  Curve* Clone() const override;

  // Version 1. Reading always fails: with "Unknown DeconSpectrum version.", or else with "Unknown Spectrum
  // version.", as a stored result does not say whether a spectrum or a deconvolved one comes next. The stream
  // is then behind the first word that is no version. The spectrum stays as it was.
  using Curve::Serialize;
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;

  friend TSLBL_API bool operator==(const DeconSpectrum& a, const DeconSpectrum& b);

  // --- Series

  // Takes out all series and the mass curve.
  void CSSeriesClear();

  // Whether a series has enough to stand: an unresolved one two peaks, a resolved one a monoisotopic peak.
  // One of another type has not.
  static bool IsSeriesValid(const CSSeriesInfo& series);
  bool IsSeriesValid(const CSSeries& series) const;
  bool IsSeriesValid(std::uint32_t index) const;

  // Adds a series under a number of its own: one more than the highest of its type. One that is not valid is
  // left out.
  void CSAddSeries(CSSeries::Types type, double avgMass, double stdDev,
                   const std::vector<CSSeriesPeakInfo>& found);
  // Gives a series other content, unless it would not be valid.
  void CSReplaceSeries(const CSSeries& series, double avgMass, double stdDev,
                       const std::vector<CSSeriesPeakInfo>& found);
  void CSDeleteSeries(const std::vector<CSSeries>& series);

  std::vector<CSSeries> QCSSeriesArray() const;
  // False, and `info` stays, if there is no such series.
  bool QCSSeriesInfo(const CSSeries& series, CSSeriesInfo& info) const;
  bool QCSSeriesInfo(std::uint32_t index, CSSeriesInfo& info) const;
  // None without the series.
  std::vector<CSSeriesPeakInfo> QCSSeriesPeakInfoArray(const CSSeries& series) const;
  std::vector<std::uint32_t> QCSSeriesChargePeakIds(const CSSeries& series, std::uint32_t charge) const;
  // Where a resolved or unresolved series stands. False, and `index` stays, without it.
  bool QCSSeriesIndex(const CSSeries& series, std::uint32_t& index) const;

  // --- Mass curve

  // The point of the mass curve at a mass, within 1e-6, or the one below it. Clamped to the ends; 0 without a
  // curve.
  std::uint32_t QCSMassCurveIdx(double mass) const;
  // The series whose average mass is nearest to a point of the mass curve. `index` stays where all are as far
  // away as the curve is wide, and where there is no such series. False without series and beyond the curve.
  bool QCSSeriesIndexFromMassIndex(std::uint32_t massIndex, std::uint32_t& index) const;

  // --- For display

  // Where the charges of a series stand: those from the lowest to the highest that it has peaks of, and up to
  // two more at each end as far as they stand on the x axis. False, and `out` is empty, for an index without
  // a series and for charges that no molecule has, more than 100000 apart.
  bool BuildCSPeakIndictors(std::uint32_t index, CSPeakIndicators& out) const;

  // Adds to the rows of a peak table what the first series that has a row's peak says of it: CSSeriesRef,
  // CSCharge, CSValue1 (monoisotopic mass), CSValue2 (average mass of the series), CSValue3 (deviation). The
  // peak of a row is its place in the table. Nothing on a spectrum without STATUS_CSDECON.
  void CSAddSeriesInfoToPeakTable(std::vector<MZPeak>& table) const;

  // A key as a label, and back: "R" or "U" for resolved and unresolved, then the number by the letters A to
  // Z, AA to ZZ and so on. A label that is none gives some key.
  static std::wstring CSSeriesObjToLabel(const CSSeries& series);
  static CSSeries CSSeriesLabelToObj(const std::wstring& label);

  // The colour of a series, 24 bits, by its position; 0 beyond 30 and below 0.
  static std::uint32_t GetSeriesColor(int index);

 private:
  void ReadVerCur(BinaryReader& reader) override;
  std::uint32_t CSGenerateSeriesId(CSSeries::Types type) const;
  const CSSeriesInfo* Find(const CSSeries& series) const;
};

// The fields of a deconvolved spectrum, those of the spectrum included.
TSLBL_API void Describe(Archive& ar, DeconSpectrum& spectrum);

}  // namespace TslBL
