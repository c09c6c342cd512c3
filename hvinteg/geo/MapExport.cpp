#include "geo/MapExport.h"

#include "FileServices.h"
#include "support/HVStatTracer.h"
#include "support/Paths.h"
#include "support/Tracing.h"

void MapExport::applyTo(HVLWrite& write) const
{
    write.WriteGeoJSON(NormalizeHvlPathU(geoJsonPath, "file"), "text/geojson");
    write.SetDataModel(NormalizeHvlPathU(dataModelPath, "file"));
}

void MapExport::traceFiles() const
{
    // A map can be larger than the memory that its reading is worth.
    if (!HVTracer()->canTrace())
        return;
    std::string content;
    FetchFile::fetch(dataModelPath, content);
    traceXMLFile(content, "DataModelFile", operation);
    FetchFile::fetch(geoJsonPath, content);
    traceJSONFile(content, "GeoJSONFile", operation);
}
