#pragma once

#include <vector>

#include "page/NetworkSpec.h"

/// Where the middle of a node is, in pixels from the upper left corner.
struct NetworkPoint
{
    double x = 0;
    double y = 0;
};

/// A place for each node, in the order of the specification, and the size of the drawing.
struct NetworkLayout
{
    std::vector<NetworkPoint> points;
    double width = 0;
    double height = 0;
};

/// Places the nodes: by level in columns from left to right, or by forces, connected nodes near
/// each other. The same network always gets the same places. The time grows with the square of the
/// nodes: a tenth of a second for 300.
NetworkLayout layOutNetwork(const NetworkSpec& spec);
