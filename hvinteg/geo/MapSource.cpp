#include "geo/MapSource.h"

#include "hvl/HVLRead.h"
#include "support/Paths.h"

MapSource MapSource::shape(const std::string& path)
{
    return {NormalizeHvlPathU(path, "file"), std::nullopt};
}

MapSource MapSource::service(const std::string& url, int layer)
{
    return {url, layer};
}

void MapSource::applyTo(HVLRead& read) const
{
    if (layer)
        read.ReadMapService(location, *layer);
    else
        read.ReadShape(location);
}
