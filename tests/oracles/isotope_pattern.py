#!/usr/bin/python3
"""Isotope patterns by full polynomial products, nothing left out, for tests/closed/engines/IsotopePatternTest.cpp.

    /usr/bin/python3 tests/oracles/isotope_pattern.py > tests/data/isotope_pattern.txt

With P_e(x) the generating function of one atom of element e and Q_e(x) that of its mass-weighted probabilities, the
molecule's are P = prod P_e^n_e and Q = sum_e n_e Q_e P_e^(n_e - 1) prod_{f != e} P_f^n_f, so the mean mass at offset k
is Q_k / P_k. Powers are made by multiplying once for each atom.

Lines: "@ FORMULA MONOMASS" begins a molecule; then "offset probability mass" for every probability above 1e-3, mass
relative to the monoisotopic mass.
"""
import re

import numpy as np

# Mass number, mass, abundance as NIST tabulates them (Atomic Weights and Isotopic Compositions, 2015).
ISOTOPES = {
    "H": [(1, 1.00782503223, 0.999885), (2, 2.01410177812, 0.000115)],
    "C": [(12, 12.0, 0.9893), (13, 13.00335483507, 0.0107)],
    "N": [(14, 14.00307400443, 0.99636), (15, 15.00010889888, 0.00364)],
    "O": [(16, 15.99491461957, 0.99757), (17, 16.99913175650, 0.00038), (18, 17.99915961286, 0.00205)],
    "Na": [(23, 22.9897692820, 1.0)],
    "P": [(31, 30.97376199842, 1.0)],
    "S": [(32, 31.9720711744, 0.9499), (33, 32.9714589098, 0.0075), (34, 33.967867004, 0.0425),
          (36, 35.96708071, 0.0001)],
    "Cl": [(35, 34.968852682, 0.7576), (37, 36.965902602, 0.2424)],
    "Br": [(79, 78.9183376, 0.5069), (81, 80.9162897, 0.4931)],
    "Fe": [(54, 53.93960899, 0.05845), (56, 55.93493633, 0.91754), (57, 56.93539284, 0.02119),
           (58, 57.93327443, 0.00282)],
}
MAIN = {e: max(rows, key=lambda row: row[2]) for e, rows in ISOTOPES.items()}
AVERAGINE = {"C": 117, "H": 184, "N": 32, "O": 35, "S": 1}


def mono(counts):
    return sum(n * MAIN[e][1] for e, n in counts.items())


def scaled(mass):
    counts = {e: round(mass / mono(AVERAGINE) * n) for e, n in AVERAGINE.items() if e != "H"}
    counts["H"] = round((mass - mono(counts)) / MAIN["H"][1])
    return {e: counts[e] for e in AVERAGINE if counts[e]}


def atom(element):
    rows = ISOTOPES[element]
    first = rows[0][0]
    p = np.zeros(rows[-1][0] - first + 1)
    q = np.zeros_like(p)
    for number, mass, abundance in rows:
        p[number - first] = abundance
        q[number - first] = abundance * (mass - MAIN[element][1])
    return p, q, first - MAIN[element][0]


def power(p, n):
    result = np.ones(1)
    for _ in range(n):
        result = np.convolve(result, p)
    return result


def pattern(counts):
    first = sum(n * atom(e)[2] for e, n in counts.items())
    all_p, all_q = np.ones(1), np.zeros(1)
    for element, n in counts.items():
        p, q, _ = atom(element)
        less_one = power(p, n - 1)
        whole = np.convolve(less_one, p)
        all_q = np.convolve(all_q, whole) + np.convolve(all_p, n * np.convolve(less_one, q))
        all_p = np.convolve(all_p, whole)
    return first, all_p, all_q


def main():
    texts = ["C60", "C6 H12 O6", "C254 H377 N65 O75 S6", "C2 H4 Br2", "C6 H6 Cl6", "C10 H10 Fe", "C39 H50 N15 O22 P3",
             "C40 H82 O21 Na"]
    molecules = [{e: int(n or 1) for e, n in re.findall(r"([A-Z][a-z]?)(\d*)", text)} for text in texts]
    molecules += [scaled(mass) for mass in (500, 1000, 2000, 5000, 20000, 60000)]
    for counts in molecules:
        first, p, q = pattern(counts)
        print("@", " ".join(f"{e}{n}" for e, n in counts.items()), f"{mono(counts):.9f}")
        for k in np.nonzero(p > 1e-3)[0]:
            print(first + k, f"{p[k]:.12g} {q[k] / p[k]:.9f}")


if __name__ == "__main__":
    main()
