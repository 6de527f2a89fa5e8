#pragma once
// The names of the platform pieces, visible in TslBL: TslBL::BinaryWriter is found too.

namespace TslCommon {}

namespace TslBL {
using namespace TslCommon;
}
