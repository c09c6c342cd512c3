#pragma once

#include <memory>
#include <string>

#include "OutputTree.h"
#include "ResultTable.h"

class HostSession;

/// What is known of a source of geometry, for a page of it.
struct MapFacts
{
    std::string name;    ///< of the source, as the user calls it
    ResultTable fields;  ///< a row each
    std::string remarks; ///< lines about its shapes
    std::string geoJson; ///< the shapes; empty for none
};

/// Shows the facts as output of the host: the map, and a table of its fields. Throws CommandFault
/// as Rendering.
std::shared_ptr<const OutputHeading> mapOutput(HostSession& session, const MapFacts& facts);
