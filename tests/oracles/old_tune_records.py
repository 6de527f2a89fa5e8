#!/usr/bin/python3
"""Writes the records of older versions that tests/tune reads, as commented hexadecimal bytes.

    /usr/bin/python3 tests/oracles/old_tune_records.py tests/data/golden

Nothing writes these versions any more; their layout is spelled out here field by field.
"""
import struct
import sys


class Hex:
    """Lines of bytes, each with the name of its field behind it."""

    def __init__(self, title):
        self.lines = [f"# {title}", "# Written by tests/oracles/old_tune_records.py."]

    def _put(self, data, comment):
        for start in range(0, max(len(data), 1), 16):
            text = data[start:start + 16].hex(" ")
            self.lines.append(f"{text:<47}  # {comment}" if start == 0 else text)

    def u32(self, name, value):
        self._put(struct.pack("<I", value), f"{name} = {value}")

    def i32(self, name, value):
        self._put(struct.pack("<i", value), f"{name} = {value}")

    def i64(self, name, value):
        self._put(struct.pack("<q", value), f"{name} = {value}")

    def f64(self, name, value):
        self._put(struct.pack("<d", value), f"{name} = {value:g}")

    def flag(self, name, value):
        self._put(bytes([value]), f"{name} = {value}")

    def text(self, name, value):
        data = value.encode("utf-8")
        self._put(struct.pack("<I", len(data)) + data, f'{name} = "{value}"')

    def save(self, folder, name):
        with open(f"{folder}/{name}.hex", "w", encoding="utf-8") as out:
            out.write("\n".join(self.lines) + "\n")


def ion_source(out, version):
    out.u32("IonSource version", version)
    out.u32("Type, APCI", 1)
    out.i32("Cylinder", -4000)
    out.i32("EndPlate", -3500)
    out.i32("CapEnter", -4500)
    out.u32("EndPlateTemp, Medium", 2)
    out.u32("DryGasTemp", 300)
    out.u32("ApciVapTemp", 325)
    out.f64("DryGasFlow", 10.5)
    out.u32("Neb1GasPres", 60)
    if version == 2:
        out.flag("Neb2GasOn", True)
        out.flag("CalValve2On", False)
        out.flag("CalSample1On", True)
        out.flag("CalSample2On", False)
    out.flag("CalValveOn", True)


def lens(out, name, single=0.0, kind=0, values=(0.0, 0.0, 0.0, 0.0)):
    out.u32(f"{name}: IOPoint version", 1)
    out.u32("Type", kind)
    out.f64("Single", single)
    for field, value in zip(("Calibrated", "Start", "End", "StepSize"), values):
        out.f64(field, value)


def control(out, voltages):
    out.u32("Control version", 1)
    out.u32("Type, Sim", 1)
    out.f64("MZLow", 500.5)
    out.f64("MZHi", 0.4)
    out.f64("MZStepSize", 0.1)
    out.u32("PolarityType, negative", 1)
    out.u32("InitSettleDelay", 650)
    out.u32("StepSettleDelay", 20)
    out.u32("PulseCountDelay", 1000)
    out.u32("ScansPerSpec", 3)
    lens(out, "CapExit, a function", kind=2, values=(0.0, 0.0, 0.0, 0.125))
    lens(out, "Skimmer", voltages["Skimmer"])
    lens(out, "Q0RFAmpl", 600)
    lens(out, "Q0Offset", voltages["Q0Offset"])
    lens(out, "Q0Exit1", voltages["Q0Exit1"])
    lens(out, "Q0Exit2", voltages["Q0Exit2"])
    out.i32("HEDynode", -7000)
    out.i32("DetectorGain", -1400)
    out.u32("SignalThreshold", 12)
    out.u32("Q1MZType, RF only", 1)
    lens(out, "Q1Resolution, units", 8192)
    lens(out, "Q1CoarseResolution, units", 12288)
    lens(out, "Q1Offset", voltages["Q1Offset"])
    lens(out, "Q1Enter", 10)
    lens(out, "Q1IonGuide", voltages["Q1IonGuide"])
    out.flag("Q1PolePolarity", True)


def syringe_model(out, version):
    out.u32("SyringeModel version", version)
    out.text("Name", "1725")
    if version == 1:
        out.i32("Diameter, whole", 5)
    else:
        out.f64("Diameter", 5.0)


def q1_point(out, name, mz, fields):
    out.u32("Q1CalPt version", 1)
    out.text("Name", name)
    out.f64("MZ", mz)
    out.u32("Fields", len(fields))
    for field, value in fields:
        out.u32("field", field)
        out.f64("value", value)


def tune(version, voltages, points):
    out = Hex(f"Tune, version {version}")
    out.u32("Tune version", version)
    out.u32("TuneInfo version", 1)
    out.text("Name", "Old")
    out.text("Comment", "Kept")
    out.i64("LastSave", 1000000000)
    ion_source(out, 2)
    control(out, voltages)
    out.u32("Syringe version", 1)
    out.text("Manufacturer", "Hamilton")
    syringe_model(out, version)
    out.u32("FlowRate", 180)
    out.u32("MZCalPts", 2)
    for name, mz, dac in (("Low", 5, 100), ("High", 3000, 60000)):
        out.u32("MZCalPt version", 1)
        out.text("Name", name)
        out.f64("MZ", mz)
        out.f64("MassDAC", dac)
    out.u32("Q1CalPts", len(points))
    for point in points:
        q1_point(out, *point)
    return out


def main(folder):
    for version in (1, 2):
        out = Hex(f"IonSource, version {version}")
        ion_source(out, version)
        out.save(folder, f"IonSource.v{version}")

    out = Hex("SyringeModel, version 1: the diameter is a whole number")
    syringe_model(out, 1)
    out.save(folder, "SyringeModel.v1")

    out = Hex("IOPoint, version 1, stored as a function")
    lens(out, "lens", 1.5, 2, (-2.25, 3.0, 4.0, 0.125))
    out.save(folder, "IOPoint.v1.function")

    # Absolute voltages, resolutions in units; field numbers as in TuneField.h.
    tune(1, {"Skimmer": 20, "Q0Offset": 12, "Q0Exit1": 10, "Q0Exit2": -60, "Q1Offset": 8, "Q1IonGuide": -4},
         [("P1", 100, [(22, 150), (23, 20), (25, 12), (26, 11), (27, -50), (32, 0), (33, 9000), (34, 8),
                       (35, 10), (36, -6)]),
          ("P2", 1000, [(25, 14), (35, 9)])]).save(folder, "Tune.v1")

    # Relative voltages, resolutions in units.
    tune(2, {"Skimmer": 18, "Q0Offset": -8, "Q0Exit1": -0.4, "Q0Exit2": -90, "Q1Offset": -1, "Q1IonGuide": -12.6},
         [("P1", 100, [(22, 150), (32, 0), (33, 9000), (35, 10)]),
          ("P2", 1000, [(23, 20)])]).save(folder, "Tune.v2")


if __name__ == "__main__":
    main(sys.argv[1])
