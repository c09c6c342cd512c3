#pragma once

#include <iosfwd>
#include <string>

#include "report/maps/MapClasses.h"

/// Looks of a map's layers: land, plain points, and areas without data.
constexpr const char* kLandLook = "land";
constexpr const char* kDotLook = "kind6";
constexpr const char* kNoneLook = "none";

/// The attributes for items of a class.
std::string lookOf(const MapClass& each);

/// The kind of a layer's items, and the name of the hatch for areas without data.
struct LegendForm
{
    bool isOfPoints = false;
    std::string hatch;
};

/// Writes the legend of a layer's colours. `hasNone`: some items have no data.
void writeColours(std::ostream& out, const MapChannel& channel, const MapClasses& classes,
                  const LegendForm& form, bool hasNone);

/// Writes the legend of point sizes, up to the largest.
void writeSizes(std::ostream& out, const MapChannel& channel, double largest);

/// The radius, in units, of a point whose area represents a size.
double radiusOf(double size, double largest);
