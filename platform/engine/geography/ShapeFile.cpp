#include "ShapeFile.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <iterator>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "GdalMessages.h"
#include "GeometryWriter.h"
#include "base/CivilTime.h"

namespace EmbeddedHV::maps {
namespace {

constexpr const char* kShapesField = "shape";

struct Kind
{
    OGRwkbGeometryType shapes;
    CFGeo::Type type;
};

/// A line or a polygon of a shape file may have several parts, so the kind is the one with multiple
/// parts.
constexpr Kind kKinds[] = {
    {wkbPoint, CFGeo::Point},
    {wkbMultiPoint, CFGeo::MultiPoint},
    {wkbLineString, CFGeo::MultiLineString},
    {wkbMultiLineString, CFGeo::MultiLineString},
    {wkbPolygon, CFGeo::MultiPolygon},
    {wkbMultiPolygon, CFGeo::MultiPolygon},
    {wkbTIN, CFGeo::MultiPolygon},
    {wkbPolyhedralSurface, CFGeo::MultiPolygon},
    // A file of multipatches. Its records are surfaces of several kinds.
    {wkbUnknown, CFGeo::MultiPolygon},
};

struct ShapeStorage
{
    OGRFieldType type;
    CFField::StorageType storage;
};

/// All other types become texts.
constexpr ShapeStorage kShapeStorages[] = {
    {OFTInteger, CFField::Integer}, {OFTInteger64, CFField::Integer},
    {OFTReal, CFField::Real},       {OFTDate, CFField::Date},
    {OFTTime, CFField::Time},       {OFTDateTime, CFField::Timestamp},
};

CFField::StorageType storageOf(OGRFieldType type)
{
    const auto* found = std::ranges::find(kShapeStorages, type, &ShapeStorage::type);
    return found == std::end(kShapeStorages) ? CFField::String : found->storage;
}

/// A date and time of a record, in days and in microseconds of the day. Shape files have no time
/// zone.
struct Moment
{
    std::int64_t days = 0;
    std::int64_t microseconds = 0;
};

bool momentOf(const OGRFeature& feature, int field, Moment& moment)
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    float second = 0;
    int zone = 0;
    if (!feature.GetFieldAsDateTime(field, &year, &month, &day, &hour, &minute, &second, &zone))
        return false;
    const auto date = std::chrono::year(year) / month / day;
    if (date.ok())
        moment.days = std::chrono::sys_days(date).time_since_epoch().count();
    const std::int64_t seconds = (hour * 60LL + minute) * 60LL;
    // GDAL stores seconds in single precision, which is exact only to milliseconds.
    moment.microseconds =
        seconds * base::kMicrosecondsPerSecond + std::llround(second * 1000.0) * 1000;
    return true;
}

class ShapeFileLayer : public Layer
{
public:
    ShapeFileLayer(std::string path, GDALDatasetUniquePtr dataset, CoordinateSystems& systems)
        : _path(std::move(path)), _dataset(std::move(dataset)), _layer(*_dataset->GetLayer(0))
    {
        describeAttributes();
        describeShapes(systems);
    }

    const std::vector<CFField>& fields() const override { return _fields; }
    void rewind(const std::vector<std::size_t>& wanted) override;
    bool next() override;
    void read(std::size_t field, LayerValue& value) override;
    bool readShape(Shape& shape) override;

private:
    void describeAttributes();
    void describeShapes(CoordinateSystems& systems);
    void readMoment(int field, LayerValue& value) const;

    std::string _path;
    GDALDatasetUniquePtr _dataset;
    OGRLayer& _layer;
    OGRFeatureUniquePtr _feature;
    std::vector<CFField> _fields;
};

void ShapeFileLayer::describeAttributes()
{
    const OGRFeatureDefn& definition = *_layer.GetLayerDefn();
    for (int i = 0; i < definition.GetFieldCount(); ++i) {
        const OGRFieldDefn& field = *definition.GetFieldDefn(i);
        const CFField::StorageType storage = storageOf(field.GetType());
        _fields.emplace_back(field.GetNameRef(),
                             storage == CFField::String ? CFField::Nominal : CFField::Continuous,
                             storage);
    }
}

void ShapeFileLayer::describeShapes(CoordinateSystems& systems)
{
    const OGRwkbGeometryType shapes = _layer.GetGeomType();
    const auto* kind = std::ranges::find(kKinds, wkbFlatten(shapes), &Kind::shapes);
    if (kind == std::end(kKinds))
        throw GeographyError(GeographyError::NotOfItsKind, _path,
                             std::string("the file holds no shapes that can be read, but ") +
                                 OGRGeometryTypeToName(shapes));
    CFGeo geo(kind->type, wkbHasZ(shapes) || shapes == wkbUnknown ? 3 : 2);
    if (const OGRSpatialReference* reference = _layer.GetSpatialRef()) {
        const CoordinateSystem system = systemOf(*reference, systems);
        geo.SetCoordinateSystem(system.wkid, system.name, system.isProjected, system.wkt);
    }
    OGREnvelope extent;
    // The header of an empty file has an extent of zeros, which would be a real place.
    if (_layer.GetFeatureCount() > 0 && _layer.GetExtent(&extent) == OGRERR_NONE)
        geo.SetEnvelope({extent.MinX, extent.MaxY, extent.MaxX, extent.MinY});
    CFField field(kShapesField, CFField::Typeless, CFField::String, CFField::None);
    field.SetGeo(std::move(geo));
    _fields.push_back(std::move(field));
}

void ShapeFileLayer::rewind(const std::vector<std::size_t>& wanted)
{
    std::vector<const char*> ignored;
    const auto attributes = _fields.size() - 1;
    const auto isWanted = [&](std::size_t field) {
        return std::ranges::find(wanted, field) != wanted.end();
    };
    const OGRFeatureDefn& definition = *_layer.GetLayerDefn();
    for (std::size_t i = 0; i < attributes; ++i)
        if (!isWanted(i))
            ignored.push_back(definition.GetFieldDefn(static_cast<int>(i))->GetNameRef());
    if (!isWanted(attributes))
        ignored.push_back("OGR_GEOMETRY");
    ignored.push_back(nullptr);
    _layer.SetIgnoredFields(ignored.data());
    _layer.ResetReading();
}

bool ShapeFileLayer::next()
{
    GdalMessages messages;
    _feature.reset(_layer.GetNextFeature());
    // GDAL returns null both at the end and for an unreadable record. Only the message tells which.
    if (!messages.error().empty())
        throw GeographyError(GeographyError::Unreadable, _path, messages.error());
    return _feature != nullptr;
}

void ShapeFileLayer::readMoment(int field, LayerValue& value) const
{
    Moment moment;
    value.isMissing = !momentOf(*_feature, field, moment);
    switch (_fields[static_cast<std::size_t>(field)].GetStorage()) {
    case CFField::Date:
        value.integer = moment.days;
        break;
    case CFField::Time:
        value.integer = moment.microseconds;
        break;
    default:
        value.integer = moment.days * base::kMicrosecondsPerDay + moment.microseconds;
    }
}

void ShapeFileLayer::read(std::size_t field, LayerValue& value)
{
    const int index = static_cast<int>(field);
    if (field + 1 == _fields.size()) {
        const OGRGeometry* geometry = _feature->GetGeometryRef();
        value.isMissing = !geometry || !writeGeometry(*geometry, value.text);
        return;
    }
    value.isMissing = !_feature->IsFieldSetAndNotNull(index);
    if (value.isMissing)
        return;
    switch (_fields[field].GetStorage()) {
    case CFField::Integer:
        value.integer = _feature->GetFieldAsInteger64(index);
        break;
    case CFField::Real:
        value.real = _feature->GetFieldAsDouble(index);
        break;
    case CFField::String:
        value.text = _feature->GetFieldAsString(index);
        break;
    default:
        readMoment(index, value);
    }
}

bool ShapeFileLayer::readShape(Shape& shape)
{
    const OGRGeometry* geometry = _feature->GetGeometryRef();
    return geometry && readGeometry(*geometry, shape);
}

/// A shape file consists of three files. Without the index GDAL would create one. Without the
/// attributes only the shapes could be read.
void checkCompanions(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    if (!fs::exists(path, error))
        throw GeographyError(GeographyError::FileMissing, path, "there is no such file");
    if (fs::is_directory(path, error))
        throw GeographyError(GeographyError::NotOfItsKind, path,
                             "this is a folder and no shape file");
    for (const char* lower : {".shx", ".dbf"}) {
        std::string upper(lower);
        std::ranges::transform(upper, upper.begin(),
                               [](char letter) { return letter == '.' ? '.' : letter & ~0x20; });
        fs::path companion(path);
        if (!fs::exists(companion.replace_extension(lower), error) &&
            !fs::exists(companion.replace_extension(upper), error))
            throw GeographyError(GeographyError::FileMissing, path,
                                 std::string("there is no file with the extension ") + lower +
                                     " next to the shape file");
    }
}

} // namespace

CoordinateSystem systemOf(const OGRSpatialReference& reference, CoordinateSystems& systems)
{
    const char* authority = reference.GetAuthorityName(nullptr);
    const char* code = reference.GetAuthorityCode(nullptr);
    if (authority && code && (EQUAL(authority, "EPSG") || EQUAL(authority, "ESRI"))) {
        try {
            return systems.of(std::atoi(code));
        } catch (const GeographyError&) { // NOLINT(bugprone-empty-catch): the file has its own text
        }
    }
    CoordinateSystem system;
    system.name = reference.GetName() ? reference.GetName() : "";
    system.isProjected = reference.IsProjected() != 0;
    char* wkt = nullptr;
    reference.exportToWkt(&wkt);
    system.wkt = wkt ? wkt : "";
    CPLFree(wkt);
    return system;
}

std::unique_ptr<Layer> openShapeFile(const std::string& path, CoordinateSystems& systems)
{
    checkCompanions(path);
    GdalMessages messages;
    const char* const drivers[] = {"ESRI Shapefile", nullptr};
    GDALDatasetUniquePtr dataset(
        GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, drivers));
    if (!dataset || dataset->GetLayerCount() == 0)
        throw GeographyError(GeographyError::NotOfItsKind, path,
                             "this is not a shape file, or it is cut short" +
                                 (messages.error().empty() ? "" : ": " + messages.error()));
    return std::make_unique<ShapeFileLayer>(path, std::move(dataset), systems);
}

} // namespace EmbeddedHV::maps
