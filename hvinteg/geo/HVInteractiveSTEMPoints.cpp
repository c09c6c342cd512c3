#include <algorithm>

#include "CFMetaData.h"
#include "dialog/DialogCases.h"
#include "dialog/OutputRows.h"
#include "dialog/RequestScope.h"
#include "geo/CoordinateSystem.h"
#include "geo/HVInteractiveSTEM.h"
#include "geo/MapExport.h"
#include "geo/PointJobs.h"
#include "runner/ExecutionScope.h"
#include "support/HVSimpleFile.h"
#include "support/Tracing.h"

// Points of a dataset as GeoJSON.

namespace {

constexpr const char* kInvalid = "Shape source is invalid.";

/// Whether all fields exist and are numeric.
bool areNumbers(const CFMetaData& model, const std::vector<std::string>& fields)
{
    return std::all_of(fields.begin(), fields.end(), [&model](const std::string& name) {
        const CFField* const field = model.GetField(name);
        return field != nullptr && field->GetStorage() != CFField::String;
    });
}

} // namespace

bool HVInteractiveSTEM::getPointGeoJSON(const std::string& fromName, int fromWkid,
                                        const std::string& toName, int toWkid,
                                        LocallyUniqueID dataset, const std::string& dataPath,
                                        const std::vector<std::string>& coordinateFields,
                                        const std::string& dataModelPath,
                                        const std::string& geoJsonPath)
{
    beginRequest();
    // Longitude and latitude, or x and y, and an optional height.
    if (coordinateFields.size() != 2 && coordinateFields.size() != 3)
        return false;
    const MapExport order{{fromName, fromWkid}, {toName, toWkid},  dataModelPath,
                          geoJsonPath,          "getPointGeoJSON", kInvalid};
    RequestScope request(*this);
    const bool isWritten = exportPoints({dataset, dataPath, {}}, coordinateFields, order);
    request.end();
    if (isWritten)
        order.traceFiles();
    return isWritten;
}

bool HVInteractiveSTEM::exportPoints(const DialogChoice& data,
                                     const std::vector<std::string>& coordinateFields,
                                     const MapExport& order)
{
    CoordinateSystem from;
    CoordinateSystem to;
    if (!order.isCartesian()) {
        if (!getCoordinatesInfo(order.from.name, order.from.wkid, from))
            return false;
        getCoordinatesInfo(order.to.name, order.to.wkid, to);
    }
    const std::unique_ptr<DialogCases> cases = openCases(data, "pointData");
    if (cases == nullptr)
        return false;
    const ExecutionScope execution(runner());
    const bool isWritten = writePoints(cases->rows(), toUtf8(coordinateFields),
                                       order.isCartesian() ? nullptr : &from, to, order);
    // Before the cases are destroyed: the execution refers to them.
    cleanExecution();
    return isWritten;
}

/// Runs two jobs on the same cases: the first computes the envelope, which the second writes to its
/// data model.
bool HVInteractiveSTEM::writePoints(HVRawDataIterator& iterator,
                                    const std::vector<std::string>& fields,
                                    const CoordinateSystem* from, const CoordinateSystem& to,
                                    const MapExport& order)
{
    if (!areNumbers(CFMetaData(iterator.getDataModel()), fields))
        return false;
    const std::vector<double> envelope = getGeoEnvelope(iterator, fields[0], fields[1]);
    if (envelope.size() != kEnvelopeSize)
        return false;
    const std::string job = pointJob(iterator, fields, from, to, envelope, order);
    traceHVLFile(job, "HvlJobText", order.operation);
    const bool isWritten = runOn(iterator, job);
    if (!isWritten)
        explainUnknown(order.message);
    return isWritten;
}

/// Returns no envelope if the job was cancelled while it ran, because it writes no file then.
std::vector<double> HVInteractiveSTEM::getGeoEnvelope(HVRawDataIterator& iterator,
                                                      const std::string& xField,
                                                      const std::string& yField)
{
    const HVSimpleFile data("aggpointdata.csv", true, true);
    const HVSimpleFile model("aggpointdatamodel.xml", true, true);
    const ExecutionScope execution(runner());
    const std::string job = envelopeJob(iterator, xField, yField, data, model);
    traceHVLFile(job, "HvlJobText", "getGeoEnvelope");
    std::vector<double> envelope;
    if (runOn(iterator, job)) {
        OutputRows rows(runner(), data.GetFileName());
        if (rows.get() != nullptr)
            envelope = envelopeOf(*rows.get());
        // Dispose here, not in the destructor, so that an exception of the engine fails the
        // request.
        rows.dispose();
    } else {
        explainUnknown(kInvalid);
    }
    cleanExecution();
    return envelope;
}

bool HVInteractiveSTEM::runOn(HVRawDataIterator& iterator, const std::string& job)
{
    if (!runner().prepareHVLJob(job))
        return false;
    // An iterator serves several jobs, and each reads all cases.
    iterator.Rewind(false);
    return runner().addInputIterator(&iterator) && tryRunHV(runner());
}

std::unique_ptr<DialogCases> HVInteractiveSTEM::openCases(const DialogChoice& data,
                                                          const char* name)
{
    std::string reason;
    std::unique_ptr<DialogCases> cases = DialogCases::open(data, name, reason);
    if (cases == nullptr && reason.empty())
        setTranslatedException("Cannot read the selected file.");
    else if (cases == nullptr)
        setException(reason);
    return cases;
}
