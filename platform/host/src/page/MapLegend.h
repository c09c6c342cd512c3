#pragma once

#include <iosfwd>
#include <string>

#include "page/MapClasses.h"

/// The looks of a map's layers: what stands for nothing and what has no data.
constexpr const char* kLandLook = "land";
constexpr const char* kDotLook = "kind6";
constexpr const char* kNoneLook = "none";

/// The attributes of what belongs to a class.
std::string lookOf(const MapClass& each);

/// How a layer's things look, and how the hatch of areas without data is called.
struct LegendForm
{
    bool isOfPoints = false;
    std::string hatch;
};

/// Writes what the colours of a layer stand for; `hasNone`: whether some of it has no data.
void writeColours(std::ostream& out, const MapChannel& channel, const MapClasses& classes,
                  const LegendForm& form, bool hasNone);

/// Writes what the sizes of points stand for, up to the largest.
void writeSizes(std::ostream& out, const MapChannel& channel, double largest);

/// The radius of a point whose area tells a size, in units.
double radiusOf(double size, double largest);
