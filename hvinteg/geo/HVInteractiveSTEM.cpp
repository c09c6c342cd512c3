#include "geo/HVInteractiveSTEM.h"

#include "FileServices.h"
#include "MultiByte.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVSimpleContainer.h"
#include "dialog/RequestScope.h"
#include "geo/CoordinateSystem.h"
#include "geo/MapSource.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLDataModelBuilder.h"
#include "hvl/HVLRead.h"
#include "runner/HVRunner.h"
#include "support/FileSpecific.h"
#include "support/Paths.h"
#include "support/Tracing.h"
#include "support/Transcoding.h"
#include "support/ZipReader.h"

// Sources of geometry: whether they exist and can be read.

namespace {

// Texts for the user, by the keys of the host's string table.
constexpr const char* kNoShapeInZip = "The selected zip file does not contain a shape file.";
constexpr const char* kNoDbf = "A corresponding dbf file was not found";
constexpr const char* kUnreadableShape = "Cannot read the selected file.";
constexpr const char* kUnreadableLayer = "Shape source is invalid.";

constexpr std::size_t kExtension = 3; ///< length of a file name extension
constexpr std::size_t kZipEnding = 4; ///< length including the period

/// Tests the extension, in any letter case.
bool isZip(const std::string& path)
{
    return path.size() >= kZipEnding &&
           VEXAMBstrnccmp_A(path.c_str() + path.size() - kZipEnding, ".zip", kZipEnding) == 0;
}

/// A shape file stores its attributes in a dbf file beside it.
bool hasAttributes(std::string path)
{
    if (path.size() < kExtension)
        return false;
    path.replace(path.size() - kExtension, kExtension, "dbf");
    return FileSpecific(path).Exists();
}

/// A job whose output is described and which never runs.
std::string describeJob(const MapSource& source, const HVStatContainer& container)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    source.applyTo(read);
    // One record proves that the source can be read.
    read.SetMaxCaseCount(1);
    HVLDataModelBuilder builder(&program);
    builder.SetOutputContainer(container);
    builder.SetNormalizeDataModel(true);
    builder.AddPredFunction(&read);
    return composedJob(program, builder);
}

} // namespace

HVInteractiveSTEM::HVInteractiveSTEM() = default;

HVInteractiveSTEM::~HVInteractiveSTEM()
{
    cleanupTempSubDirs();
}

bool HVInteractiveSTEM::validateShapeSource(const std::string& path, std::string& dataModel)
{
    beginRequest();
    const std::string shapePath = getShapeFilePath(path);
    return !shapePath.empty() && readDataModel(MapSource::shape(shapePath), "validateShapeSource",
                                               kUnreadableShape, dataModel);
}

bool HVInteractiveSTEM::validateServiceLayer(const std::string& url, int layer,
                                             std::string& dataModel)
{
    beginRequest();
    return readDataModel(serviceOf(url, layer), "validateServiceLayer", kUnreadableLayer,
                         dataModel);
}

bool HVInteractiveSTEM::validateMapService(const std::string& url, std::string& layers)
{
    beginRequest();
    layers.clear();
    const RequestScope request(*this);
    // An exception of the service counts as an answer with an empty text. A question leaves no
    // execution whose release could throw, so the end of the scope is early enough.
    const bool answers = !url.empty() && runner().getMapServiceLayers(url, layers);
    if (answers)
        traceJSONFile(layers, "LayerInfoContent", "validateMapService");
    return answers;
}

bool HVInteractiveSTEM::readDataModel(const MapSource& source, const char* operation,
                                      const char* message, std::string& dataModel)
{
    const HVSimpleContainer container("outputDataModel", "");
    RequestScope request(*this);
    dataModel.clear();
    const std::string job = describeJob(source, container);
    traceHVLFile(job, "HvlJobText", operation);
    const bool isRead = tryGetMetadata(runner(), job, container, dataModel);
    if (!isRead)
        explainUnknown(message);
    request.end();
    traceXMLFile(dataModel, "DataModelContent", operation);
    return isRead;
}

MapSource HVInteractiveSTEM::serviceOf(const std::string& url, int layer) const
{
    return MapSource::service(transcodeToUTF8(url.c_str(), converter()), layer);
}

/// Returns an empty path, and sets the reason, if there is no shape file. Does not test the shape
/// file itself: the engine does that when it reads it.
std::string HVInteractiveSTEM::getShapeFilePath(const std::string& path)
{
    std::string shapePath = path;
    if (isZip(path)) {
        shapePath = unpackedShape(path);
        if (shapePath.empty())
            return {};
    }
    if (hasAttributes(shapePath))
        return shapePath;
    setTranslatedException(kNoDbf);
    return {};
}

/// The shape file has the name of its archive and lies at its top level.
std::string HVInteractiveSTEM::unpackedShape(const std::string& path)
{
    std::string directory;
    std::string name = SeparateFileName(path, directory);
    // Cut by length: the extension may be in any letter case.
    name.resize(name.size() - kZipEnding);
    const std::string folder = unpackedFolder(path, name);
    std::string shapePath = folder + "\\" + name + ".shp";
    if (!folder.empty() && FileSpecific(shapePath).Exists())
        return shapePath;
    setTranslatedException(kNoShapeInZip);
    return {};
}

/// Unpacks an archive only once, so that all requests of a dialog use the same map. Returns an
/// empty path if that fails.
std::string HVInteractiveSTEM::unpackedFolder(const std::string& path, const std::string& name)
{
    if (_tempSubDirs == nullptr)
        _tempSubDirs = std::make_unique<std::map<std::string, std::string>>();
    if (const auto known = _tempSubDirs->find(path); known != _tempSubDirs->end())
        return known->second;
    const std::string folder = CreateTempFolder(name);
    if (folder.empty())
        return {};
    if (UnzipToDir(path, folder))
        return _tempSubDirs->emplace(path, folder).first->second;
    // Remove what an incomplete extraction left.
    RemoveFolderFromTempDir(folder);
    return {};
}

void HVInteractiveSTEM::cleanupTempSubDirs()
{
    if (_tempSubDirs == nullptr)
        return;
    for (const auto& [path, folder] : *_tempSubDirs)
        RemoveFolderFromTempDir(folder);
    _tempSubDirs.reset();
}

bool HVInteractiveSTEM::getCoordinatesInfo(const std::string& name, int wkid,
                                           CoordinateSystem& system)
{
    std::string info;
    if (!name.empty())
        info = runner().getCoordinatesSystemInfo(name);
    // The name takes precedence; the id is for names that the engine does not know.
    if (info.empty() && wkid >= 1)
        info = runner().getCoordinatesSystemInfo(wkid);
    if (info.empty())
        return false;
    HVRunner::CSTYPE type = HVRunner::CSTYPE_None;
    HVRunner::ParseCoordinatesSystemInfo(info, system.wkid, system.name, system.wkt, type);
    system.isProjected = type == HVRunner::CSTYPE_Projected;
    return true;
}

std::vector<std::string> HVInteractiveSTEM::toUtf8(const std::vector<std::string>& texts) const
{
    std::vector<std::string> result;
    result.reserve(texts.size());
    for (const std::string& text : texts)
        result.push_back(transcodeToUTF8(text.c_str(), converter()));
    return result;
}
