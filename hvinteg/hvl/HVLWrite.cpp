#include "hvl/HVLWrite.h"

#include <utility>

#include "bridge/JNIJSONObject.h"

HVLWrite::HVLWrite(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(WriteFunction);
}

HVLWrite::HVLWrite(const HVLWrite& other) = default;

HVLWrite& HVLWrite::operator=(const HVLWrite& other) = default;

HVLWrite::~HVLWrite() = default;

void HVLWrite::WriteHVDatasource(const std::string& name, bool append)
{
    setDestination(Destination::NamedSource, name, append ? "append" : "overwrite");
}

void HVLWrite::WriteSAV(const std::string& path, const std::string& dataPassword)
{
    setDestination(Destination::Sav, path, dataPassword);
}

void HVLWrite::WriteCSV(const std::string& path)
{
    setDestination(Destination::Csv, path, std::string());
}

void HVLWrite::WriteGeoJSON(const std::string& path, const std::string& type)
{
    WriteGeoJSON(path, type, {}, {});
}

void HVLWrite::WriteGeoJSON(const std::string& path, const std::string& type,
                            const std::string& resourceId, const std::string& key)
{
    setDestination(Destination::GeoJson, path, type);
    _resourceId = resourceId;
    _metadataKey = key;
}

void HVLWrite::WriteHVBF(const std::string& path)
{
    setDestination(Destination::Hvbf, path, std::string());
}

void HVLWrite::SetDataModel(std::string path)
{
    _dataModelDestination = std::move(path);
}

bool HVLWrite::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    HVLFunction* pred = GetFirstPredecessor();
    // The write ends its chain, so it reports earlier failures.
    if (pred != nullptr && !pred->GenerateHVL())
        return false;
    if (_kind == Destination::None)
        return false;

    JNIJSONObject configuration;
    putDestination(configuration);
    return CreateFunction("write", configuration);
}

/// `qualifier` is a mode, a password or a media type, depending on the kind.
void HVLWrite::setDestination(Destination kind, const std::string& destination,
                              const std::string& qualifier)
{
    _destination = destination;
    _kind = kind;
    _qualifier = qualifier;
}

void HVLWrite::putDestination(JNIJSONObject& configuration) const
{
    switch (_kind) {
    case Destination::None:
        break;
    case Destination::NamedSource:
        configuration.put("dataSource", _destination.c_str());
        configuration.put("mode", _qualifier.c_str());
        break;
    case Destination::Sav:
        putFile(configuration, "application/x-vexa-sav");
        if (!_qualifier.empty())
            configuration.put("dataPassword", _qualifier.c_str());
        break;
    case Destination::Csv:
        putFile(configuration, "text/csv");
        break;
    case Destination::GeoJson:
        putFile(configuration, _qualifier.c_str());
        putMetadata(configuration);
        break;
    case Destination::Hvbf:
        putFile(configuration, "hvbf");
        break;
    }
}

void HVLWrite::putFile(JNIJSONObject& configuration, const char* type) const
{
    configuration.put("dataDestination", _destination.c_str());
    // The engine requires the key even if no document is wanted.
    configuration.put("dataModelDestination", _dataModelDestination.c_str());
    configuration.put("type", type);
}

/// Written only if both parts are set.
void HVLWrite::putMetadata(JNIJSONObject& configuration) const
{
    if (_resourceId.empty() || _metadataKey.empty())
        return;
    JNIJSONObject metadata;
    metadata.put("resourceId", _resourceId.c_str());
    metadata.put("key", _metadataKey.c_str());
    configuration.put("metadata", &metadata);
}
