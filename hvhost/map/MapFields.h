#pragma once

#include <string>

class MapInput;
class MapSession;

/// The data model of a map's fields, as XML. Throws CommandFault with the reason if the source has
/// none.
std::string mapDataModel(MapSession& session, const MapInput& map);
