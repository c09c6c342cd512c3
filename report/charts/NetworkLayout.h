#pragma once

#include <vector>

#include "report/charts/NetworkSpec.h"

/// The centre of a node, in pixels from the upper left corner.
struct NetworkPoint
{
    double x = 0;
    double y = 0;
};

/// A position for each node, in the order of the specification, and the size of the drawing.
struct NetworkLayout
{
    std::vector<NetworkPoint> points;
    double width = 0;
    double height = 0;
};

/// Places the nodes: by level in columns from left to right, or by forces that keep connected nodes
/// close together. The result is deterministic. The time grows with the square of the number of
/// nodes: a tenth of a second for 300.
NetworkLayout layOutNetwork(const NetworkSpec& spec);
