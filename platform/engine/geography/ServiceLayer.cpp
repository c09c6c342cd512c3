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
constexpr std::uint64_t kLargestPage = 10000; // an answer is held in memory

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

/// As a parameter of an address holds it.
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

/// The records of a layer, asked for page by page.
class ServiceLayer : public Layer
{
public:
    ServiceLayer(MapService service, int layer, std::uint64_t mostRecords,
                 CoordinateSystems& systems)
        : _service(std::move(service)), _path("/" + std::to_string(layer)), _most(mostRecords)
    {
        const json described = _service.ask(_path, _path.substr(1) + ".json");
        _fields = fieldsOfLayer(described, place(), systems);
        _pageSize = pageSizeOf(described);
        _hasPages = flagIn(memberOf(described, "advancedQueryCapabilities"), "supportsPagination");
        _idField = textIn(described, "objectIdField");
    }

    const std::vector<CFField>& fields() const override { return _fields; }
    void rewind(const std::vector<std::size_t>& wanted) override;
    bool next() override;
    void read(std::size_t field, LayerValue& value) override;

private:
    std::string place() const { return _service.address() + _path; }
    const CFGeo& shapes() const { return *_fields.back().GetGeo(); }
    void fetchPage();
    void checkPage(const json& answer) const;
    std::string parameters(std::uint64_t count) const;
    const json& feature() const { return memberOf(_page, "features")[_index]; }
    void readShape(LayerValue& value) const;

    MapService _service;
    std::string _path;
    std::uint64_t _most;
    std::vector<CFField> _fields;
    std::uint64_t _pageSize = kUsualPage;
    bool _hasPages = false;
    std::string _idField;

    std::string _outFields;
    bool _wantsShapes = false;
    json _page;
    std::size_t _index = 0;
    std::size_t _count = 0;    ///< of the page
    std::uint64_t _offset = 0; ///< of the page to come
    bool _isLast = false;      ///< there is no page to come
};

void ServiceLayer::rewind(const std::vector<std::size_t>& wanted)
{
    _outFields.clear();
    _wantsShapes = false;
    for (const std::size_t field : wanted) {
        if (field + 1 == _fields.size()) {
            _wantsShapes = true;
            continue;
        }
        _outFields += (_outFields.empty() ? "" : ",") + _fields[field].GetName();
    }
    // A query names at least one field.
    if (_outFields.empty())
        _outFields = _idField.empty() ? "*" : _idField;
    _page = nullptr;
    _index = 0;
    _count = 0;
    _offset = 0;
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
            // Without an order, a record may stand on two pages or on none.
            text += "&orderByFields=" + escaped(_idField);
    }
    return text;
}

void ServiceLayer::checkPage(const json& answer) const
{
    const json& features = memberOf(answer, "features");
    if (!features.is_array())
        throw GeographyError(GeographyError::Service, place() + ": the answer holds no features");
    // A service that ignores the offset would be read for ever.
    const json& before = memberOf(_page, "features");
    if (before.is_array() && !before.empty() && !features.empty() && before[0] == features[0])
        throw GeographyError(GeographyError::Service,
                             place() + ": the service gives the same records again and again");
}

void ServiceLayer::fetchPage()
{
    const std::uint64_t count = std::min(_pageSize, _most - std::min(_most, _offset));
    if (count == 0) {
        _isLast = true;
        _count = 0;
        return;
    }
    json answer =
        _service.ask(_path + "/query", _path.substr(1) + "/query.json", parameters(count));
    checkPage(answer);
    _page = std::move(answer);
    _count = memberOf(_page, "features").size();
    _index = 0;
    _offset += _count;
    const bool isCut = flagIn(_page, "exceededTransferLimit");
    if (isCut && !_hasPages && _offset < _most)
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

void ServiceLayer::readShape(LayerValue& value) const
{
    value.isMissing = true;
    const json& shape = memberOf(feature(), "geometry");
    if (!shape.is_object())
        return;
    GdalMessages messages;
    OGRGeometryH handle = OGR_G_CreateGeometryFromEsriJson(shape.dump().c_str());
    const OGRGeometryUniquePtr geometry(OGRGeometry::FromHandle(handle));
    value.isMissing = !geometry || !writeGeometry(*geometry, value.text);
}

void ServiceLayer::read(std::size_t field, LayerValue& value)
{
    if (field + 1 == _fields.size())
        return readShape(value);
    const json& attributes = memberOf(feature(), "attributes");
    readValue(memberOf(attributes, _fields[field].GetName().c_str()), _fields[field].GetStorage(),
              value);
}

} // namespace

std::unique_ptr<Layer> openServiceLayer(MapService service, int layer, std::uint64_t mostRecords,
                                        CoordinateSystems& systems)
{
    return std::make_unique<ServiceLayer>(std::move(service), layer, mostRecords, systems);
}

} // namespace EmbeddedHV::maps
