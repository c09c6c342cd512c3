#pragma once

#include <iosfwd>
#include <string>

#include "report/maps/MapSpec.h"

/// The texts of a map on the page, with a description for screen readers, and its anchor.
struct MapName
{
    std::string title;
    std::string description; ///< empty for none
    std::string anchor;
};

/// Writes a map as a drawing with legends, notes on what is left out, and its data as folded
/// tables. It needs no script.
void writeMap(std::ostream& out, const MapSpec& spec, const OutputDocument& document,
              const MapName& name);
