#include "ServiceLayer.h"

#include <algorithm>

#include <ogr_api.h>
#include <ogr_geometry.h>

#include "GdalMessages.h"
#include "GeometryWriter.h"
#include "ServiceFields.h"

namespace EmbeddedHV::maps {
namespace {

using nlohmann::json;

constexpr std::uint64_t kUsualPage = 1000;
constexpr std::uint64_t kLargestPage = 10000; // because an answer is held in memory

bool flagIn(const json& object, const char* key)
{
    const json& flag = memberOf(object, key);
    return flag.is_boolean() && flag.get<bool>();
}

std::uint64_t pageSizeOf(const json& layer)
{
    const json& most = memberOf(layer, "maxRecordCount");
    if (!most.is_number_unsigned() || most.get<std::uint64_t>() == 0)
        return kUsualPage;
    return std::min(most.get<std::uint64_t>(), kLargestPage);
}

/// The field that identifies records; empty if the service names none.
std::string idFieldOf(const json& layer)
{
    std::string name = textIn(layer, "objectIdField");
    for (const json& field : memberOf(layer, "fields"))
        if (name.empty() && textIn(field, "type") == "esriFieldTypeOID")
            name = textIn(field, "name");
    return name;
}

/// Escapes a text for a parameter of an address.
std::string escaped(const std::string& text)
{
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if ((code < 0x80 && std::isalnum(code)) || code == '_' || code == '-' || code == '.') {
            result += letter;
            continue;
        }
        result += '%';
        result += kDigits[code >> 4];
        result += kDigits[code & 15];
    }
    return result;
}

/// The records of a layer, requested page by page.
class ServiceLayer : public Layer
{
public:
    ServiceLayer(MapService service, int layer, const LayerBounds& bounds,
                 CoordinateSystems& systems)
        : _service(std::move(service)), _path("/" + std::to_string(layer)), _bounds(bounds)
    {
        const json described = _service.ask(_path, _path.substr(1) + ".json");
        _fields = fieldsOfLayer(described, place(), systems);
        _pageSize = pageSizeOf(described);
        _hasPages = flagIn(memberOf(described, "advancedQueryCapabilities"), "supportsPagination");
        _idField = idFieldOf(described);
    }

    const std::vector<CFField>& fields() const override { return _fields; }
    void rewind(const std::vector<std::size_t>& wanted) override;
    bool next() override;
    void read(std::size_t field, LayerValue& value) override;
    bool readShape(Shape& shape) override;

private:
    std::string place() const { return _service.address() + _path; }
    const CFGeo& shapes() const { return *_fields.back().GetGeo(); }
    void fetchPage();
    json askForPage(std::uint64_t& count);
    void checkPage(const json& answer) const;
    void checkEnd() const;
    const json& firstId(const json& page) const;
    std::string parameters(std::uint64_t count) const;
    const json& feature() const { return memberOf(_page, "features")[_index]; }
    OGRGeometryUniquePtr geometry() const;

    MapService _service;
    std::string _path;
    LayerBounds _bounds;
    std::vector<CFField> _fields;
    std::uint64_t _pageSize = kUsualPage;
    bool _hasPages = false;
    std::string _idField;

    std::string _outFields;
    bool _wantsShapes = false;
    json _page;
    std::size_t _index = 0;
    std::size_t _count = 0;    ///< number of records on the page
    std::uint64_t _offset = 0; ///< of the next page
    std::uint64_t _before = 0; ///< bytes that the service had sent before the reading began
    bool _isLast = false;      ///< there is no next page
};

void ServiceLayer::rewind(const std::vector<std::size_t>& wanted)
{
    // A query needs at least one field. The id is also used to compare pages.
    _outFields = _idField;
    _wantsShapes = false;
    for (const std::size_t field : wanted) {
        if (field + 1 == _fields.size())
            _wantsShapes = true;
        else if (_fields[field].GetName() != _idField)
            _outFields += (_outFields.empty() ? "" : ",") + _fields[field].GetName();
    }
    if (_outFields.empty())
        _outFields = "*";
    _page = nullptr;
    _index = 0;
    _count = 0;
    _offset = 0;
    _before = _service.received();
    _isLast = false;
}

std::string ServiceLayer::parameters(std::uint64_t count) const
{
    std::string text = "where=1%3D1&outFields=" + escaped(_outFields);
    text += _wantsShapes ? "&returnGeometry=true" : "&returnGeometry=false";
    if (shapes().GetWkid() > 0)
        text += "&outSR=" + std::to_string(shapes().GetWkid());
    if (shapes().GetCoordinates() > 2)
        text += "&returnZ=true";
    if (_hasPages) {
        text += "&resultOffset=" + std::to_string(_offset) +
                "&resultRecordCount=" + std::to_string(count);
        if (!_idField.empty())
            // Without an order, a record may be on two pages or on none.
            text += "&orderByFields=" + escaped(_idField);
    }
    return text;
}

/// The id of the first record on a page; null if the page is empty or the layer has no id.
const json& ServiceLayer::firstId(const json& page) const
{
    const json& features = memberOf(page, "features");
    static const json kNone;
    return features.is_array() && !features.empty()
               ? memberOf(memberOf(features[0], "attributes"), _idField.c_str())
               : kNone;
}

void ServiceLayer::checkPage(const json& answer) const
{
    const json& features = memberOf(answer, "features");
    if (!features.is_array())
        throw GeographyError(GeographyError::Service, place() + ": the answer holds no features");
    // A service that ignores the offset returns its first page again. Without ids this check is
    // impossible, because pages of different records may look equal.
    const json& id = firstId(answer);
    if (!id.is_null() && id == firstId(_page))
        throw GeographyError(GeographyError::Service,
                             place() + ": the service returns the same records again and again");
}

/// A faulty service may return records for ever. The limit prevents that they fill the disk.
void ServiceLayer::checkEnd() const
{
    if (_bounds.wanted == UINT64_MAX && _offset > _bounds.records)
        throw GeographyError(GeographyError::Service,
                             place() + ": the layer has more than " +
                                 std::to_string(_bounds.records) +
                                 " records; it is read when maxRecordsCount says how many");
    if (_service.received() - _before > _bounds.bytes)
        throw GeographyError(GeographyError::Service, place() + ": the layer has more than " +
                                                          std::to_string(_bounds.bytes) +
                                                          " bytes, the limit for a map service");
}

/// Requests a page. If the answer is too large, requests fewer records at a time.
json ServiceLayer::askForPage(std::uint64_t& count)
{
    for (;; _pageSize = count = count / 2) {
        try {
            return _service.askForRecords(_path + "/query", _path.substr(1) + "/query.json",
                                          parameters(count), _bounds.values);
        } catch (const GeographyError& error) {
            if (error.kind() != GeographyError::TooLarge || !_hasPages || _service.isFolder() ||
                count <= 1)
                throw;
        }
    }
}

void ServiceLayer::fetchPage()
{
    std::uint64_t count = std::min(_pageSize, _bounds.wanted - std::min(_bounds.wanted, _offset));
    if (count == 0) {
        _isLast = true;
        _count = 0;
        return;
    }
    json answer = askForPage(count);
    checkPage(answer);
    _page = std::move(answer);
    _count = memberOf(_page, "features").size();
    _index = 0;
    _offset += _count;
    checkEnd();
    const bool isCut = flagIn(_page, "exceededTransferLimit");
    if (isCut && !_hasPages && _offset < _bounds.wanted)
        throw GeographyError(GeographyError::Service,
                             place() + ": the service gives only " + std::to_string(_count) +
                                 " records of the layer, and no further pages");
    _isLast = !_hasPages || _service.isFolder() || _count == 0 || (!isCut && _count < count);
}

bool ServiceLayer::next()
{
    if (_index + 1 < _count) {
        ++_index;
        return true;
    }
    if (_isLast)
        return false;
    fetchPage();
    return _count > 0;
}

/// The geometry of the current record; null if it is missing or invalid.
OGRGeometryUniquePtr ServiceLayer::geometry() const
{
    const json& shape = memberOf(feature(), "geometry");
    if (!shape.is_object())
        return nullptr;
    GdalMessages messages;
    OGRGeometryH handle = OGR_G_CreateGeometryFromEsriJson(shape.dump().c_str());
    return OGRGeometryUniquePtr(OGRGeometry::FromHandle(handle));
}

bool ServiceLayer::readShape(Shape& shape)
{
    const OGRGeometryUniquePtr read = geometry();
    return read && readGeometry(*read, shape);
}

void ServiceLayer::read(std::size_t field, LayerValue& value)
{
    if (field + 1 == _fields.size()) {
        const OGRGeometryUniquePtr read = geometry();
        value.isMissing = !read || !writeGeometry(*read, value.text);
        return;
    }
    const json& attributes = memberOf(feature(), "attributes");
    readValue(memberOf(attributes, _fields[field].GetName().c_str()), _fields[field].GetStorage(),
              value);
}

} // namespace

std::unique_ptr<Layer> openServiceLayer(MapService service, int layer, const LayerBounds& bounds,
                                        CoordinateSystems& systems)
{
    return std::make_unique<ServiceLayer>(std::move(service), layer, bounds, systems);
}

} // namespace EmbeddedHV::maps
