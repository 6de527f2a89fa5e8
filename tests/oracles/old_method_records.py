#!/usr/bin/python3
"""Writes the records of older versions that tests/method reads, as commented hexadecimal bytes.

    /usr/bin/python3 tests/oracles/old_method_records.py tests/data/golden

Nothing writes these versions any more; their layout is spelled out here field by field.
"""
import sys

from old_tune_records import Hex


class MethodHex(Hex):
    def __init__(self, title):
        super().__init__(title)
        self.lines[1] = "# Written by tests/oracles/old_method_records.py."


def no_action(out):
    out.u32("DDInfo version", 1)
    out.u32("Type, None", 0)
    out.u32("StartTrigger, AbsAmplAboveThres", 2)
    out.f64("StartTriggerValue", 0)
    out.u32("CurveEvals", 0)
    out.u32("EndTrigger, StartTriggerNotDetected", 0)
    out.f64("EndTriggerValue", 0)
    out.u32("ExclDuration", 0)


def peak_park(out):
    out.u32("DDInfo version", 1)
    out.u32("Type, PeakPark", 2)
    out.u32("StartTrigger, SNAboveThres", 3)
    out.f64("StartTriggerValue", 12.5)
    out.u32("CurveEvals", 2)
    out.u32("CurveEval version", 2)
    out.u32("Threshold", 5)
    out.u32("ThresholdParams version", 1)
    out.f64("Value", 0)
    out.u32("CurveEval version", 2)
    out.u32("Aerosol Filter", 10)
    out.u32("the number once more", 10)
    out.u32("EndTrigger, TriggerTimeout", 1)
    out.f64("EndTriggerValue", 30.25)
    out.u32("ExclDuration", 90000)


def tune_run(out, tune_id, records, info):
    out.u32("TuneRun version", 1)
    out.u32("TuneId", tune_id)
    out.u32("Records, which count as 1", records)
    info(out)


def time_period(out, save, loops, timeout, sequence):
    out.u32("TimePeriod version", 1)
    out.flag("Save", save)
    out.u32("Loops", loops)
    out.u32("Timeout", timeout)
    out.u32("Sequence", len(sequence))
    for item in sequence:
        out.u32("ids", len(item))
        for tune_run_id in item:
            out.u32("id", tune_run_id)


def main(folder):
    out = MethodHex("TuneRun, version 1: without a delay")
    tune_run(out, 3, 7, peak_park)
    out.save(folder, "TuneRun.v1")

    out = MethodHex("TimePeriod, version 1: without a delay")
    time_period(out, False, 20, 60000, [[1], [2, 4], [3]])
    out.save(folder, "TimePeriod.v1")

    out = MethodHex("Method, version 3: without a valve")
    out.u32("Method version", 3)
    out.text("Desc", "Old")
    out.u32("Tunes", 0)
    out.u32("TuneRuns", 1)
    out.u32("id", 1)
    tune_run(out, 5, 7, no_action)
    out.u32("TimePeriods", 2)
    time_period(out, True, 20, 60000, [[1]])
    time_period(out, True, 0, 60000, [])
    out.u32("Exclusions", 0)
    out.u32("Inclusions", 0)
    out.save(folder, "Method.v3")


if __name__ == "__main__":
    main(sys.argv[1])
