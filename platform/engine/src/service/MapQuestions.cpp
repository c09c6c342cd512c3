#include "service/MapQuestions.h"

#include <cmath>
#include <limits>

#include <nlohmann/json.hpp>

#include "maps/GeographyLibrary.h"

namespace EmbeddedHV {
namespace {

using Json = nlohmann::ordered_json;
using maps::GeographyError;

constexpr double kMostLongitude = 360; // maps may continue beyond 180
constexpr double kMostLatitude = 90;

[[noreturn]] void refuse(const std::string& problem)
{
    throw GeographyError(GeographyError::WrongQuestion, problem);
}

double degreesIn(const Json& area, const std::string& id, const char* key, double most)
{
    const auto corner = area.find(key);
    const bool isNumber = corner != area.end() && corner->is_number();
    const double degrees = isNumber ? corner->get<double>() : NAN;
    // The comparison is negated so that NaN, for a missing corner, is rejected too.
    if (!(std::fabs(degrees) <= most))
        refuse("the area " + id + ": \"" + key + "\" is not a number of degrees");
    return degrees;
}

maps::Area areaOf(const std::string& id, const Json& area)
{
    if (!area.is_object())
        refuse("the area " + id + " is not an object");
    maps::Area result;
    result.west = degreesIn(area, id, "leftUpperX", kMostLongitude);
    result.north = degreesIn(area, id, "leftUpperY", kMostLatitude);
    result.east = degreesIn(area, id, "rightLowerX", kMostLongitude);
    result.south = degreesIn(area, id, "rightLowerY", kMostLatitude);
    if (result.south > result.north)
        refuse("the area " + id + " has its upper side below its lower side");
    return result;
}

Json entryOf(const maps::RecommendedSystem& recommended)
{
    Json methods = Json::array();
    for (const maps::TransformationMethod& method : recommended.methods)
        methods.push_back({{method.name, method.isForward ? "forward" : "inverse"}});
    return {{"wkid", recommended.system.wkid},
            {"name", recommended.system.name},
            {"wkt", recommended.system.wkt},
            {"trans_methods", std::move(methods)}};
}

} // namespace

std::string systemInfo(const maps::CoordinateSystem& system)
{
    return Json{{"wkid", system.wkid},
                {"name", system.name},
                {"wkt", system.wkt},
                {"isProjection", system.isProjected}}
        .dump();
}

std::vector<std::string> recommendations(const std::string& input, int count)
{
    const Json areas = Json::parse(input, nullptr, false);
    if (!areas.is_object())
        refuse("the areas are not a JSON object");
    const std::size_t most =
        count < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(count);
    std::vector<std::string> result;
    for (const auto& [id, area] : areas.items()) {
        Json systems = Json::array();
        for (const auto& recommended : maps::geography().recommend(areaOf(id, area), most))
            systems.push_back(entryOf(recommended));
        result.push_back(Json{{id, std::move(systems)}}.dump());
    }
    return result;
}

} // namespace EmbeddedHV
