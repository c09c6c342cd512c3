#include "bridge/JNIHvlProgram.h"
#include "dialog/RequestScope.h"
#include "geo/CoordinateSystem.h"
#include "geo/HVInteractiveSTEM.h"
#include "geo/MapExport.h"
#include "geo/MapSource.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLReprojection.h"
#include "runner/HVRunner.h"
#include "support/Tracing.h"

// Geometry of shape files and map services as GeoJSON.

namespace {

/// Reads, reprojects if there is a target, and writes.
std::string exportJob(const MapSource& source, const CoordinateSystem& from,
                      const CoordinateSystem& to, const MapExport& order)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    source.applyTo(read);
    HVLReprojection reprojection(&program);
    if (!to.name.empty()) {
        reprojection.SetOriCoorSystem(from.name);
        reprojection.SetDesCoorSystem(to.name);
        reprojection.AddPredFunction(&read);
    }
    HVLWrite write(&program);
    order.applyTo(write);
    // An unknown target leaves a job without a source, which the engine refuses. Without that, a
    // map in the wrong system would look correct.
    if (order.to.name.empty())
        write.AddPredFunction(&read);
    else
        write.AddPredFunction(&reprojection);
    return composedJob(program, write);
}

} // namespace

bool HVInteractiveSTEM::getShapeGeoJSON(const std::string& fromName, int fromWkid,
                                        const std::string& toName, int toWkid,
                                        const std::string& shapePath,
                                        const std::string& dataModelPath,
                                        const std::string& geoJsonPath)
{
    beginRequest();
    const std::string path = getShapeFilePath(shapePath);
    return !path.empty() && exportMap(MapSource::shape(path), {{fromName, fromWkid},
                                                               {toName, toWkid},
                                                               dataModelPath,
                                                               geoJsonPath,
                                                               "getShapeGeoJSON",
                                                               "Cannot read the selected file."});
}

bool HVInteractiveSTEM::getServiceGeoJSON(const std::string& fromName, int fromWkid,
                                          const std::string& toName, int toWkid,
                                          const std::string& url, int layer,
                                          const std::string& dataModelPath,
                                          const std::string& geoJsonPath)
{
    beginRequest();
    return exportMap(serviceOf(url, layer), {{fromName, fromWkid},
                                             {toName, toWkid},
                                             dataModelPath,
                                             geoJsonPath,
                                             "getServiceGeoJSON",
                                             "Shape source is invalid."});
}

/// An unknown system has an empty name. As the source that means the map's own system; as the
/// target the job fails.
bool HVInteractiveSTEM::exportMap(const MapSource& source, const MapExport& order)
{
    RequestScope request(*this);
    CoordinateSystem from;
    CoordinateSystem to;
    if (!order.isCartesian()) {
        getCoordinatesInfo(order.from.name, order.from.wkid, from);
        getCoordinatesInfo(order.to.name, order.to.wkid, to);
    }
    const std::string job = exportJob(source, from, to, order);
    traceHVLFile(job, "HvlJobText", order.operation);
    const bool isWritten = runner().prepareHVLJob(job) && tryRunHV(runner());
    if (!isWritten)
        explainUnknown(order.message);
    request.end();
    if (isWritten)
        order.traceFiles();
    return isWritten;
}
