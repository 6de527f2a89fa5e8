#include <tslbl/tune/PLAutoFindPrefs.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, PLAutoFindPrefs& prefs) {
  ar.Version(1, "Unknown PLAutoFindPrefs version.");
  if (const auto element = ar.Element(L"PLPref")) {
    ar(L"EverySpectrum", prefs.EverySpectrum);
    ar(L"AvgSpectrum", prefs.AvgSpectrum);
    ar(L"SaveSpectrum", prefs.SaveSpectrum);
    ar(L"Display", prefs.DisplayPList);
    ar(L"Smooth", prefs.SmoothSpectrum);
    ar(L"CSDecon", prefs.CSDecon);
    ar(L"Save", prefs.SavePeakList);
  }
}

void PLAutoFindPrefs::WPeakTableSelection(std::int32_t avg, bool save) {
  EverySpectrum = false;
  AvgSpectrum = avg;
  SaveSpectrum = save;
}

bool PLAutoFindPrefs::QPeakTableSelection(std::int32_t& avg, bool& save) const {
  avg = AvgSpectrum;
  save = SaveSpectrum;
  return !EverySpectrum;
}

BinaryWriter& operator<<(BinaryWriter& writer, const PLAutoFindPrefs& prefs) {
  frame::WriteBinary(&frame::DescribeErased<PLAutoFindPrefs>, &prefs, writer);
  return writer;
}

BinaryReader& operator>>(BinaryReader& reader, PLAutoFindPrefs& prefs) {
  PLAutoFindPrefs fresh;
  frame::ReadBinary(&frame::DescribeErased<PLAutoFindPrefs>, &fresh, reader);
  prefs = fresh;
  return reader;
}

XMLParser& operator>>(XMLParser& parser, PLAutoFindPrefs& prefs) {
  PLAutoFindPrefs read = prefs;
  frame::ReadXml(&frame::DescribeErased<PLAutoFindPrefs>, &read, parser);
  if (read.EverySpectrum) {
    read.AvgSpectrum = prefs.AvgSpectrum;
    read.SaveSpectrum = prefs.SaveSpectrum;
  }
  prefs = read;
  return parser;
}

}  // namespace TslBL
