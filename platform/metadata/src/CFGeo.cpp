#include "CFGeo.h"

#include <cmath>
#include <utility>

#include "WordTable.h"

namespace {

constexpr std::array<const char*, 6> kGeoWords = {"Point",           "MultiPoint", "LineString",
                                                  "MultiLineString", "Polygon",    "MultiPolygon"};

} // namespace

void CFGeo::SetCoordinateSystem(int wkid, std::string csname, bool isProjected, std::string wkt)
{
    _wkid = wkid;
    _csname = std::move(csname);
    _isProjected = isProjected;
    _wkt = std::move(wkt);
}

void CFGeo::SetEnvelope(const Envelope& envelope)
{
    const bool known = !std::isnan(envelope.leftUpperX) && !std::isnan(envelope.leftUpperY) &&
                       !std::isnan(envelope.rightLowerX) && !std::isnan(envelope.rightLowerY);
    _envelope = known ? std::optional(envelope) : std::nullopt;
}

const char* WordOf(CFGeo::Type type)
{
    return wordAt(kGeoWords, static_cast<int>(type));
}
