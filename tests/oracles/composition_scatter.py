#!/usr/bin/python3
"""How far isotopes of real proteins lie off those of the average molecule: tests/oracles/composition_scatter.py

300 random sequences for each mass; residues come as often as in proteins. Of each the mean mass of every isotope over
that of the monoisotopic form is compared with the average molecule of the same mass. Prints the mean and the standard
deviation of the difference for isotopes 1 to 6, mDa. Needs numpy.
"""
import importlib.machinery
import importlib.util
import pathlib

import numpy as np

SCORE = pathlib.Path(__file__).resolve().parents[2] / "scripts/score-decon"
SEQUENCES = 300
LARGE_SEQUENCES = 3000
AVERAGE = np.array([117, 184, 32, 35, 1])  # C, H, N, O, S
LIGHTEST = np.array([12.0, 1.00782503207, 14.0030740048, 15.99491461956, 31.972071])


def load_score():
    loader = importlib.machinery.SourceFileLoader("score", str(SCORE))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("score", loader))
    loader.exec_module(module)
    return module


def average_molecule(mass):
    atoms = np.round(AVERAGE * mass / (AVERAGE @ LIGHTEST)).astype(int)
    atoms[1] = 0
    atoms[1] = round((mass - atoms @ LIGHTEST) / LIGHTEST[1])
    return atoms


def random_sequence(score, random, mass):
    rows = np.array(list(score.RESIDUES.values()))
    often = rows[:, 5] / rows[:, 5].sum()
    return rows[random.choice(len(rows), max(3, int(mass / 111)), p=often), :5].sum(axis=0).astype(int) + [0, 2, 0, 1, 0]


def main():
    score = load_score()
    random = np.random.default_rng(1)
    for mass in (800, 1500, 2500, 4000, 8000):
        differences = []
        for _ in range(SEQUENCES):
            real = score.isotopes_of(random_sequence(score, random, mass))[1]
            average = score.isotopes_of(average_molecule(real[0]))[1]
            differences.append((real - real[0] - average + average[0])[1:7])
        print(mass, "mean", np.round(1e3 * np.mean(differences, axis=0), 2), "deviation",
              np.round(1e3 * np.std(differences, axis=0), 2))
    heavier = np.array([np.arange(len(share)) @ share for share, _ in score.ISOTOPES.values()])  # isotopes an atom
    for mass in (5000, 10000, 14000, 20000, 29000):
        off = []
        for _ in range(LARGE_SEQUENCES):
            real = random_sequence(score, random, mass)
            off.append((real - AVERAGE * (real @ LIGHTEST) / (AVERAGE @ LIGHTEST)) @ heavier)
        print(f"{mass} pattern off by {np.mean(off):+.3f}, deviation {np.std(off):.3f}, "
              f"over root {np.std(off) / np.sqrt(mass):.5f}, more than half {np.mean(np.abs(off) > 0.5):.3f}")


main()
