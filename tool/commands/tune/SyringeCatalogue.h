#pragma once
// The syringes that a site knows, from the file beside the library.

#include <tslbl/tune/Syringe.h>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct KnownSyringe {
  std::wstring manufacturer;
  TslBL::SyringeModel model;

  // "MAKE/MODEL", as it is typed.
  std::string Name() const;
};

// In the order of the catalogue; empty without one, or with one that cannot be read.
std::vector<KnownSyringe> KnownSyringes();

// By its name, in any case.
std::optional<KnownSyringe> FindSyringe(const std::string& name);

// Where the catalogue is looked for.
std::string SyringeCatalogueFile();

}  // namespace TslTool
