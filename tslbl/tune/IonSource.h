#pragma once
// The ion source: voltages, temperatures, gases and valves.
//
// One record serves both kinds of probe. Under APCI three places have another meaning, and
// another tag in documents: Cylinder holds the corona voltage, Neb1GasPres the aux gas
// pressure, CalValveOn the nebulizing gas switch. A document is read by either tag,
// whatever the probe; of both in one document the APCI one counts.

#include <tslbl/Export.h>
#include <tslbl/closed/common/Probes.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API IonSource : Record<IonSource> {
  // Unknown text reads as Off.
  enum TempLevels : std::uint32_t { Off = 0, Low = 1, Medium = 2, High = 3 };

  Probes::ProbeTypes Type = Probes::ESI;  // all but APCI are kinds of ESI
  std::int32_t Cylinder = 0;              // volts
  std::int32_t EndPlate = 0;              // volts
  std::int32_t CapEnter = 0;              // volts
  TempLevels EndPlateTemp = Off;
  std::uint32_t DryGasTemp = 0;   // degrees C
  std::uint32_t ApciVapTemp = 0;  // degrees C
  double DryGasFlow = 0.0;
  std::uint32_t Neb1GasPres = 0;
  bool Neb2GasOn = false;
  bool CalValve2On = false;
  bool CalSample1On = false;
  bool CalSample2On = false;
  bool CalValveOn = false;
  bool ControlByCurrent = true;  // APCI: the corona is driven by current, not by voltage
  double CoronaCurrent = 1.0;    // APCI
};
TSLBL_API void Describe(Archive& ar, IonSource& source);

}  // namespace TslBL
