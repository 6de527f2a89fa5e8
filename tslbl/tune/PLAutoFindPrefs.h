#pragma once
// What an application does by itself to find peaks during a run: whether it makes peak
// tables of every spectrum or of an average, and what follows.
//
// Binary out and in, and in from a document element "PLPref". Reading binary throws
// std::runtime_error "Unknown PLAutoFindPrefs version." or "Unexpected end of stream." and
// then changes nothing. A value; one thread at a time may change one.

#include <tslbl/Export.h>
#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/Common.h>
#include <cstdint>

namespace TslBL {

class Archive;

class TSLBL_API PLAutoFindPrefs {
 public:
  bool QDisplayPList() const { return DisplayPList; }
  void WDisplayPList(bool on) { DisplayPList = on; }
  bool QSmoothSpectrum() const { return SmoothSpectrum; }
  void WSmoothSpectrum(bool on) { SmoothSpectrum = on; }
  bool QCSDecon() const { return CSDecon; }
  void WCSDecon(bool on) { CSDecon = on; }
  bool QSavePeakList() const { return SavePeakList; }
  void WSavePeakList(bool on) { SavePeakList = on; }

  // Peak tables of every spectrum. What was chosen for averages is kept for later.
  void WEverySpectrumSelection() { EverySpectrum = true; }
  bool QEverySpectrumSelection() const { return EverySpectrum; }
  // Peak tables of averages of `avg` spectra; `save` keeps the averages.
  void WPeakTableSelection(std::int32_t avg, bool save);
  // What was chosen for averages, and whether it is in use.
  bool QPeakTableSelection(std::int32_t& avg, bool& save) const;

 private:
  friend void Describe(Archive& ar, PLAutoFindPrefs& prefs);
  friend TSLBL_API XMLParser& operator>>(XMLParser& parser, PLAutoFindPrefs& prefs);

  bool EverySpectrum = false;
  std::int32_t AvgSpectrum = 0;
  bool SaveSpectrum = false;
  bool DisplayPList = true;
  bool SmoothSpectrum = false;
  bool CSDecon = false;
  bool SavePeakList = false;
};

TSLBL_API BinaryWriter& operator<<(BinaryWriter& writer, const PLAutoFindPrefs& prefs);
TSLBL_API BinaryReader& operator>>(BinaryReader& reader, PLAutoFindPrefs& prefs);
// A document without the element, or without a child of it, leaves what it lacks as it
// was. One that asks for every spectrum does not touch what was chosen for averages.
TSLBL_API XMLParser& operator>>(XMLParser& parser, PLAutoFindPrefs& prefs);

}  // namespace TslBL
