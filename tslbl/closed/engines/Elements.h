#pragma once
// The chemical elements that formulas may hold: the bio-elements, and those of the usual adducts and
// calibrants.
//
// Sources: isotope masses from M. Wang et al., The AME2012 atomic mass evaluation, 2012; abundances from J.
// Meija et al., Isotopic compositions of the elements 2013 (IUPAC Technical Report), 2016, with the
// representative values of M. Berglund, M. Wieser 2011 where that gives an interval; both as NIST tabulates
// them.

#include <cstdint>
#include <span>
#include <string_view>

namespace TslMath {

struct Isotope {
  std::int32_t massNumber;  // protons and neutrons
  double mass;              // of the neutral atom, Da
  double abundance;         // fraction of all atoms of the element; the isotopes of an element sum to 1
};

struct Element {
  std::string_view symbol;
  std::span<const Isotope> isotopes;  // ascending mass number
  std::size_t main;                   // index of the most abundant isotope, that of monoisotopic masses

  double MonoMass() const { return isotopes[main].mass; }
  double AverageMass() const;
};

// All elements known, ascending by mass; constant data.
std::span<const Element> Elements();

// The index in Elements() of the element with this symbol ("Na", as chemists write it); -1 if there is none.
std::int32_t FindElement(std::string_view symbol);

}  // namespace TslMath
