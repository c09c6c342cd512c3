#include "Recommendations.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <tuple>

#include "Transformations.h"

namespace EmbeddedHV::maps {
namespace {

constexpr double kCircle = 360.0;
constexpr int kDegreesWkid = 4326; // the system of the areas

/// The distance eastwards from one meridian to another: from 0 to a full circle.
double eastwards(double from, double to)
{
    const double way = std::fmod(to - from, kCircle);
    return way < 0 ? way + kCircle : way;
}

double widthOf(const Area& area)
{
    // The same meridian twice has a width of 0, unless the numbers differ by a full circle.
    return area.east - area.west >= kCircle ? kCircle : eastwards(area.west, area.east);
}

/// Proportional to the surface that it covers.
double sizeOf(const Area& area)
{
    constexpr double kRadian = std::numbers::pi / 180.0;
    return widthOf(area) * (std::sin(area.north * kRadian) - std::sin(area.south * kRadian));
}

bool holds(const Area& outer, const Area& inner)
{
    if (inner.south < outer.south || inner.north > outer.north)
        return false;
    const double width = widthOf(outer);
    return width >= kCircle || eastwards(outer.west, inner.west) + widthOf(inner) <= width;
}

struct Candidate
{
    const CataloguedSystem* system;
    double size;
};

/// The systems that fit the area, the smallest first. If several catalogues have the same name, the
/// system of the first one is used.
std::vector<const CataloguedSystem*> fittingSystems(CoordinateSystems& systems, const Area& area)
{
    std::vector<Candidate> fitting;
    for (const CataloguedSystem& system : systems.all())
        if (system.isProjected && system.area && holds(*system.area, area))
            fitting.push_back({&system, sizeOf(*system.area)});
    const auto order = [](const Candidate& candidate) {
        return std::tuple(candidate.size, candidate.system->rank, candidate.system->wkid);
    };
    std::ranges::sort(fitting, {}, order);
    std::vector<const CataloguedSystem*> result;
    result.reserve(fitting.size());
    for (const Candidate& candidate : fitting)
        result.push_back(candidate.system);
    return result;
}

} // namespace

std::vector<RecommendedSystem> recommendedSystems(CoordinateSystems& systems, const Area& area,
                                                  std::size_t most)
{
    const ContextPtr context = newContext();
    const ObjectPtr degrees = createSystem(context.get(), {kDegreesWkid, {}, {}, false});
    std::map<std::string, std::vector<TransformationMethod>> methodsOfDatum;
    std::vector<RecommendedSystem> result;
    for (const CataloguedSystem* candidate : fittingSystems(systems, area)) {
        if (result.size() >= most)
            break;
        const ObjectPtr system =
            createSystem(context.get(), {candidate->wkid, candidate->name, {}, true});
        auto described = describe(context.get(), system.get(), candidate->wkid);
        if (!described)
            continue;
        const ObjectPtr datum(proj_crs_get_geodetic_crs(context.get(), system.get()));
        // The search for transformations is slow, and many systems have the same datum.
        const auto [known, isNew] = methodsOfDatum.try_emplace(proj_get_name(datum.get()));
        if (isNew)
            known->second = methodsBetween(context.get(), degrees.get(), datum.get(), area);
        result.push_back({*std::move(described), known->second});
    }
    return result;
}

} // namespace EmbeddedHV::maps
