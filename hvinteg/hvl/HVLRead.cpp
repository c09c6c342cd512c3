#include "hvl/HVLRead.h"

#include <algorithm>
#include <utility>

#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "runner/HVStatDataIterator.h"
#include "support/Conversions.h"

namespace {

/// Java has no unsigned 64-bit integer. A count above its largest number has the same effect as
/// that number.
long long toJavaLong(unsigned long long count)
{
    constexpr unsigned long long largest = std::numeric_limits<long long>::max();
    return static_cast<long long>(std::min(count, largest));
}

} // namespace

HVLRead::HVLRead(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(ReadFunction);
}

HVLRead::HVLRead(const HVLRead& other) = default;

HVLRead& HVLRead::operator=(const HVLRead& other) = default;

HVLRead::~HVLRead() = default;

void HVLRead::ReadIterator(HVStatDataIterator& iterator)
{
    setSource(Source::Iterator, iterator.getName());
}

void HVLRead::ReadIterator(const std::string& name)
{
    setSource(Source::Iterator, name);
}

void HVLRead::ReadHVDatasource(const std::string& name)
{
    setSource(Source::NamedSource, name);
}

void HVLRead::ReadSAV(const std::string& path, const std::string& dataPassword)
{
    setSource(Source::Sav, path);
    _password = dataPassword;
}

void HVLRead::ReadCSV(const std::string& path, bool hasHeader)
{
    setSource(Source::Csv, path);
    _hasHeader = hasHeader;
}

void HVLRead::ReadShape(const std::string& path)
{
    setSource(Source::Shape, path);
}

void HVLRead::ReadMapService(const std::string& address, int layer)
{
    setSource(Source::MapService, address);
    _queryLayer = layer;
}

void HVLRead::ReadMapService(const std::string& address, const std::string& layer)
{
    ReadMapService(address, String2Integer(layer));
}

void HVLRead::ReadHVBF(const std::string& path)
{
    setSource(Source::Hvbf, path);
}

void HVLRead::SetDataModel(std::string path)
{
    _dataModel = std::move(path);
}

void HVLRead::SetMaxCaseCount(unsigned long long count)
{
    _maxRecords = count;
}

void HVLRead::SetErrorThreshold(unsigned long long count)
{
    _errorThreshold = count;
}

bool HVLRead::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    if (_kind == Source::None)
        return false;

    JNIJSONObject configuration;
    putSource(configuration);
    if (_maxRecords != noLimit)
        configuration.put("maxRecordsCount", toJavaLong(_maxRecords));
    if (_errorThreshold != noLimit)
        configuration.put("readErrorThreshold", toJavaLong(_errorThreshold));
    // A source has no input; ignore any that were added.
    return KeepFunction(GetProgram()->createHvlFunction("read", &configuration));
}

void HVLRead::setSource(Source kind, const std::string& source)
{
    _source = source;
    _kind = kind;
}

void HVLRead::putSource(JNIJSONObject& configuration) const
{
    switch (_kind) {
    case Source::None:
        break;
    case Source::Iterator:
    case Source::NamedSource:
        configuration.put("dataSource", _source.c_str());
        break;
    case Source::Sav:
        putFile(configuration, "sav");
        break;
    case Source::Csv:
        putFile(configuration, "csv");
        break;
    case Source::Hvbf:
        putFile(configuration, "hvbf");
        break;
    case Source::Shape:
        putGeospatial(configuration, "shp");
        break;
    case Source::MapService:
        putGeospatial(configuration, "mps");
        break;
    }
}

/// A file is a location with a parser. The parser's settings depend on the format.
void HVLRead::putFile(JNIJSONObject& configuration, const char* parserName) const
{
    JNIJSONObject parserConfig;
    if (_kind == Source::Sav && !_password.empty())
        parserConfig.put("dataPassword", _password.c_str());
    if (_kind == Source::Csv)
        parserConfig.put("hasHeader", _hasHeader);

    JNIJSONObject parser;
    parser.put("name", parserName);
    parser.put("config", &parserConfig);

    JNIJSONObject location;
    location.put("path", _source.c_str());
    location.put("parser", &parser);

    JNIJSONArray locations;
    locations.add(&location);

    JNIJSONObject filesystem;
    putDataModel(filesystem);
    filesystem.put("locations", &locations);
    configuration.put("filesystem", &filesystem);
}

/// Map sources have their own structure, without a parser.
void HVLRead::putGeospatial(JNIJSONObject& configuration, const char* type) const
{
    JNIJSONObject geospatial;
    putDataModel(geospatial);
    geospatial.put("location", _source.c_str());
    geospatial.put("type", type);
    if (_kind == Source::MapService)
        geospatial.put("queryLayer", static_cast<int>(_queryLayer));
    configuration.put("geospatial", &geospatial);
}

void HVLRead::putDataModel(JNIJSONObject& object) const
{
    if (!_dataModel.empty())
        object.put("dataModel", _dataModel.c_str());
}
