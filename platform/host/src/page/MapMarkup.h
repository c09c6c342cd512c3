#pragma once

#include <iosfwd>
#include <string>

#include "page/MapSpec.h"

/// What a map is called on the page: its words for those who do not see it, and its anchor.
struct MapName
{
    std::string title;
    std::string description; ///< empty for none
    std::string anchor;
};

/// Writes a map as a drawing with legends, notes on what it leaves out, and its data as tables that
/// are folded. It needs no script.
void writeMap(std::ostream& out, const MapSpec& spec, const OutputDocument& document,
              const MapName& name);
