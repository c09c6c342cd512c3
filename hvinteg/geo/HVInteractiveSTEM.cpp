#include "geo/HVInteractiveSTEM.h"

#include "FileServices.h"
#include "MultiByte.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVSimpleContainer.h"
#include "geo/CoordinateSystem.h"
#include "geo/MapSource.h"
#include "geo/RequestScope.h"
#include "hvl/HVLDataModelBuilder.h"
#include "hvl/HVLRead.h"
#include "runner/HVRunner.h"
#include "support/FileSpecific.h"
#include "support/Paths.h"
#include "support/Tracing.h"
#include "support/Transcoding.h"
#include "support/ZipReader.h"

// Sources of geometry: whether they are there, and whether they can be read.

namespace {

// What the user is told, by the keys of the host's string table.
constexpr const char* kNoShapeInZip = "The selected zip file does not contain a shape file.";
constexpr const char* kNoDbf = "A corresponding dbf file was not found";
constexpr const char* kUnreadableShape = "Cannot read the selected file.";
constexpr const char* kUnreadableLayer = "Shape source is invalid.";

constexpr std::size_t kExtension = 3; ///< what a file name ends in, behind its period
constexpr std::size_t kZipEnding = 4; ///< and with it

/// By its ending, in any letter case.
bool isZip(const std::string& path)
{
    return path.size() >= kZipEnding &&
           VEXAMBstrnccmp_A(path.c_str() + path.size() - kZipEnding, ".zip", kZipEnding) == 0;
}

/// A shape file keeps its attributes in a file of its own.
bool hasAttributes(std::string path)
{
    if (path.size() < kExtension)
        return false;
    path.replace(path.size() - kExtension, kExtension, "dbf");
    return FileSpecific(path).Exists();
}

/// The job whose result is described: it is never run.
std::string describeJob(const MapSource& source, const HVStatContainer& container)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    source.applyTo(read);
    // One record proves that there are some to be read.
    read.SetMaxCaseCount(1);
    HVLDataModelBuilder builder(&program);
    builder.SetOutputContainer(container);
    builder.SetNormalizeDataModel(true);
    builder.AddPredFunction(&read);
    builder.GenerateHVL();
    std::string text;
    program.getHvlText(text);
    return text;
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
    RequestScope request(*this);
    // A failure of the service counts as an answer here; the empty text tells it.
    const bool answers = !url.empty() && runner().getMapServiceLayers(url, layers);
    request.end();
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

/// Empty, with the reason set, if there is none. Whether the file itself is there, and good, the
/// engine finds out when it reads it.
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

/// The shape file bears the name of its archive and stands at the top of it.
std::string HVInteractiveSTEM::unpackedShape(const std::string& path)
{
    std::string directory;
    std::string name = SeparateFileName(path, directory);
    // The ending may be in any letter case, so it is cut off by its length.
    name.resize(name.size() - kZipEnding);
    const std::string folder = unpackedFolder(path, name);
    std::string shapePath = folder + "\\" + name + ".shp";
    if (!folder.empty() && FileSpecific(shapePath).Exists())
        return shapePath;
    setTranslatedException(kNoShapeInZip);
    return {};
}

/// An archive that was unpacked before is not looked at again, so that all requests of a dialog see
/// one map. Empty if it cannot be unpacked.
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
    // What an archive left that broke off is of use to nobody.
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
    // A name beats a number, which serves where the engine does not know the name.
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
