#include <tool/simulate/Sample.h>

namespace TslTool {

// Two calibrants and a protein by infusion, small molecules injected one after the other. No two of them
// have lines in the same place, so that every line in the truth can be found.
Sample DemonstrationSample() {
  return {
      .compounds = {
          {"tributylamine", "C12H27N", 0.0, {{1, 1.0}}, 2500.0, 0.0, 0.0},
          {"hexamethoxyphosphazine", "C6H18N3O6P3", 0.0, {{1, 1.0}}, 6000.0, 0.0, 0.0},
          {"ubiquitin", "", 8559.62, {{8, 0.3}, {9, 0.7}, {10, 1.0}, {11, 0.8}, {12, 0.4}}, 3000.0, 0.0, 0.0},
          {"acetaminophen", "C8H9NO2", 0.0, {{1, 1.0}}, 9000.0, 0.15, 0.06},
          {"caffeine", "C8H10N4O2", 0.0, {{1, 1.0}}, 12000.0, 0.25, 0.06},
          {"diclofenac", "C14H11Cl2NO2", 0.0, {{1, 1.0}}, 5000.0, 0.80, 0.08},
          {"verapamil", "C27H38N2O4", 0.0, {{1, 1.0}}, 15000.0, 0.55, 0.08},
          {"angiotensin II", "C50H71N13O12", 0.0, {{1, 0.4}, {2, 1.0}}, 8000.0, 0.40, 0.08},
          {"leucine enkephalin", "C28H37N5O7", 0.0, {{1, 1.0}}, 10000.0, 0.45, 0.08},
          {"reserpine", "C33H40N2O9", 0.0, {{1, 1.0}}, 14000.0, 0.65, 0.08},
          {"bromocriptine", "C32H40BrN5O5", 0.0, {{1, 1.0}}, 6000.0, 0.70, 0.08},
      }};
}

Sample CalibrantSample() {
  const auto infused = [](const char* name, const char* formula) {
    return Compound{name, formula, 0.0, {{1, 1.0}}, 20000.0, 0.0, 0.0};
  };
  return {.compounds = {
              infused("betaine", "C5H11NO2"), infused("phosphazine 322", "C6H18N3O6P3"),
              infused("phosphazine 622", "C12H18F12N3O6P3"), infused("phosphazine 922", "C18H18F24N3O6P3"),
              infused("phosphazine 1222", "C24H18F36N3O6P3"), infused("phosphazine 1522", "C30H18F48N3O6P3"),
              infused("phosphazine 2122", "C42H18F72N3O6P3"),
              infused("phosphazine 2722", "C54H18F96N3O6P3")}};
}

}  // namespace TslTool
