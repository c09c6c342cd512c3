#pragma once

#include <string>

/// What the engine knows of a coordinate system.
struct CoordinateSystem
{
    std::string name;
    int wkid = 0;
    bool isProjected = false;
    std::string wkt;
};
