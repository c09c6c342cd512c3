#pragma once

#include <memory>
#include <string>

#include "OutputTree.h"
#include "hvhost/show/ResultTable.h"

class HostSession;

/// The data for a page about a source of geometry.
struct MapFacts
{
    std::string name;    ///< the user's name of the source
    ResultTable fields;  ///< with a row for each field
    std::string remarks; ///< lines about its shapes
    std::string geoJson; ///< the shapes; empty without shapes
};

/// Shows the facts as output of the host: the map, and a table of its fields. Throws CommandFault
/// as Rendering does.
std::shared_ptr<const OutputHeading> mapOutput(HostSession& session, const MapFacts& facts);
