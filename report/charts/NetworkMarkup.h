#pragma once

#include <iosfwd>

#include "report/charts/NetworkSpec.h"
#include "report/maps/MapMarkup.h"

/// Writes a network as a drawing with a legend, and its edges as a table beside it. It needs no
/// script. A large network is reduced to its strongest edges and the nodes that they connect. A
/// note states that, and the table has all edges.
void writeNetwork(std::ostream& out, NetworkSpec spec, const MapName& name);
