#pragma once

#include "bench/documents/FieldText.h"
#include "bench/documents/WiringTable.h"

namespace kxbench::documents {

/// Throws DocumentError for a list whose pins, or connectors, may stand in a column that nobody understood:
/// without it, pins of different connectors would be taken for one. `places` knows the table's places.
void RequireWholePlaces(const WiringTable& table, const PlaceSplitter& places);

}  // namespace kxbench::documents
