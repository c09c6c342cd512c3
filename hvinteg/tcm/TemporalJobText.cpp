#include "tcm/TemporalJobText.h"

#include "bridge/JNIJSONArray.h"
#include "data/HVRawDataIterator.h"
#include "support/Paths.h"
#include "tcm/RecordFile.h"

namespace {

constexpr const char* kReaderConf = "readerConf";

std::string list(const std::string& element)
{
    return "[" + element + "]";
}

} // namespace

std::string GenerateReaderConf(const std::string& dataPath, const std::string& dataModelPath)
{
    JNIJSONObject noConfig;
    JNIJSONObject parser;
    parser.put("name", "hvbf");
    parser.put("config", &noConfig);
    JNIJSONObject location;
    location.put("path", TransformPath(dataPath).c_str());
    location.put("parser", &parser);
    JNIJSONArray locations;
    locations.add(&location);
    JNIJSONObject filesystem;
    filesystem.put("dataModel", TransformPath(dataModelPath).c_str());
    filesystem.put("locations", &locations);
    JNIJSONObject root;
    root.put("filesystem", &filesystem);
    return definition(kReaderConf, cleanedJson(root.toString()));
}

std::string readerLine(const RecordFile& file)
{
    return GenerateReaderConf(file.records.getAbsolutePath(), file.model.getAbsolutePath());
}

std::string readerLine(HVRawDataIterator& iterator)
{
    return definition(kReaderConf, iteratorReader(iterator));
}

std::string writerLine(const RecordFile& file)
{
    JNIJSONObject json;
    json.put("dataDestination", TransformPath(file.records.getAbsolutePath()).c_str());
    json.put("dataModelDestination", TransformPath(file.model.getAbsolutePath()).c_str());
    json.put("type", "hvbf");
    return definition("writerConf", cleanedJson(json.toString()));
}

std::string GenerateRtsdpConf(const std::string& containerPath)
{
    JNIJSONObject json;
    json.put("exportFutureFlag", true);
    return definition("rtsdpConf", json.toString()) +
           definition("rtsdpInConf", list(importedContainer("JSON", containerPath)));
}

std::string outputLine(const char* name, const HVSimpleContainer& container)
{
    return definition(name, list(exportedContainer(container)));
}

std::string modelLine(const char* name, const char* containerName, const std::string& modelPath)
{
    JNIJSONObject json =
        GetOutputContainerJson(containerName, NormalizeHvlPathU(modelPath, "file"), false);
    return definition(name, list(json.toString()));
}
