#pragma once

#include <string>

/// The engine's description of a coordinate system.
struct CoordinateSystem
{
    std::string name;
    int wkid = 0;
    bool isProjected = false;
    std::string wkt;
};
