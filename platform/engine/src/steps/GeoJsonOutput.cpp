#include "steps/GeoJsonOutput.h"

#include <algorithm>
#include <cerrno>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/PendingFile.h"
#include "maps/GeographyLibrary.h"
#include "steps/FeatureText.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kWriteStep = "write";
constexpr std::size_t kFlushBytes = std::size_t{256} << 10;
constexpr int kDegreesWkid = 4326; // the system of a document that names none

std::size_t shapesIn(const Fields& fields)
{
    const auto found = std::ranges::find_if(
        fields, [](const CFField& field) { return field.GetGeo() != nullptr; });
    if (found == fields.end())
        throw JobError(
            errors::kNoShapes,
            FaultParts{.step = kWriteStep,
                       .what =
                           "the records have no geospatial field, which a GeoJSON document needs"});
    return static_cast<std::size_t>(found - fields.begin());
}

/// The WKT text of the field's system; empty if neither the field nor a catalogue has it.
std::string systemTextOf(const CFGeo& geo)
{
    if (!geo.GetWkt().empty())
        return geo.GetWkt();
    try {
        return maps::geography().systemOf(geo.GetWkid()).wkt;
    } catch (const std::exception&) {
        return {}; // the document can do without
    }
}

/// The catalogue of the system's id. The system's WKT text names it, in the older or the newer form
/// of WKT.
std::string catalogueOf(const CFGeo& geo)
{
    const std::string id = std::to_string(geo.GetWkid());
    const std::string text = systemTextOf(geo);
    const bool isSecond = text.find("AUTHORITY[\"ESRI\",\"" + id + "\"]") != text.npos ||
                          text.find("ID[\"ESRI\"," + id + "]") != text.npos;
    return isSecond ? "ESRI" : "EPSG";
}

/// The beginning of the document, up to its features.
std::string headOf(const GeoJsonMetadata& metadata, const CFGeo& geo)
{
    std::string head = "{\"type\":\"FeatureCollection\"";
    if (!metadata.resourceId.empty() || !metadata.key.empty())
        head += ",\"metadata\":{\"resourceId\":" + jsonText(metadata.resourceId) +
                ",\"key\":" + jsonText(metadata.key) + "}";
    if (geo.GetWkid() > 0 && geo.GetWkid() != kDegreesWkid)
        head += ",\"crs\":{\"type\":\"name\",\"properties\":{\"name\":\"urn:ogc:def:crs:" +
                catalogueOf(geo) + "::" + std::to_string(geo.GetWkid()) + "\"}}";
    return head + ",\"features\":[";
}

} // namespace

GeoJsonOutput::GeoJsonOutput(JobContext& context, const std::string& path,
                             const std::string& modelPath, GeoJsonMetadata metadata, Fields fields)
    : _context(context), _files(path, modelPath, kWriteStep), _metadata(std::move(metadata)),
      _fields(std::move(fields)), _shapes(shapesIn(_fields))
{
    _files.announce(_context);
}

void GeoJsonOutput::refuse() const
{
    PendingFile::refuse(kWriteStep, target(), errno);
}

std::string GeoJsonOutput::statement(const std::string& select)
{
    const Dialect& dialect = _context.dialect;
    std::string columns;
    for (const CFField& field : _fields) {
        const std::string name = dialect.name(field.GetName());
        const CFField::StorageType storage = field.GetStorage();
        const bool isPlain = storage == CFField::Integer || storage == CFField::Real;
        columns += columns.empty() ? "" : ", ";
        // The database formats dates and times.
        columns += isPlain ? name : dialect.cast(name, ValueType::String);
    }
    begin();
    return "SELECT " + columns + " FROM (" + select + ")";
}

void GeoJsonOutput::begin()
{
    _stream.open(_files.dataPath(), std::ios::binary | std::ios::trunc);
    if (!_stream)
        refuse();
    _text = headOf(_metadata, *_fields[_shapes].GetGeo());
    _isFirst = true;
}

void GeoJsonOutput::take(RecordBatch& batch)
{
    const FeatureColumns columns(batch, _fields, _shapes);
    for (std::size_t row = 0; row < batch.rows(); ++row) {
        _text += _isFirst ? "\n" : ",\n";
        _isFirst = false;
        if (!columns.append(row, _text))
            throw JobError(errors::kNotAShape,
                           {.step = kWriteStep,
                            .file = target(),
                            .field = _fields[_shapes].GetName(),
                            .what = "a value of the field \"" + _fields[_shapes].GetName() +
                                    "\" is not a shape"});
        if (_text.size() >= kFlushBytes)
            flush();
    }
}

void GeoJsonOutput::flush()
{
    if (!_stream.write(_text.data(), static_cast<std::streamsize>(_text.size())).flush())
        refuse();
    _text.clear();
}

void GeoJsonOutput::commit()
{
    _text += "\n]}\n";
    flush();
    _stream.close();
    if (!_stream)
        refuse();
    _files.commit(_context, _fields);
}

} // namespace EmbeddedHV
