#include "CoordinateSystems.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <set>

#include <strings.h>

namespace EmbeddedHV::maps {
namespace {

/// The catalogues whose codes are wkids. If both have a code, the first is used.
constexpr const char* kCatalogues[] = {"EPSG", "ESRI"};

constexpr PJ_TYPE kTypes[] = {PJ_TYPE_GEOGRAPHIC_2D_CRS, PJ_TYPE_PROJECTED_CRS};

int numberOf(const char* code)
{
    int number = -1;
    const char* end = code + std::strlen(code);
    const auto [last, error] = std::from_chars(code, end, number);
    return error == std::errc() && last == end ? number : -1;
}

std::optional<Area> areaOf(const PROJ_CRS_INFO& info)
{
    if (!info.bbox_valid)
        return std::nullopt;
    return Area{info.west_lon_degree, info.south_lat_degree, info.east_lon_degree,
                info.north_lat_degree};
}

void readCatalogue(PJ_CONTEXT* context, int rank, std::vector<CataloguedSystem>& systems)
{
    const std::unique_ptr<PROJ_CRS_LIST_PARAMETERS, decltype(&proj_get_crs_list_parameters_destroy)>
        parameters(proj_get_crs_list_parameters_create(), proj_get_crs_list_parameters_destroy);
    parameters->types = kTypes;
    parameters->typesCount = std::size(kTypes);
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, decltype(&proj_crs_info_list_destroy)> list(
        proj_get_crs_info_list_from_database(context, kCatalogues[rank], parameters.get(), &count),
        proj_crs_info_list_destroy);
    for (int i = 0; i < count; ++i) {
        const PROJ_CRS_INFO& info = *list.get()[i];
        if (const int wkid = numberOf(info.code); wkid > 0)
            systems.push_back(
                {info.name, wkid, info.type == PJ_TYPE_PROJECTED_CRS, rank, areaOf(info)});
    }
}

std::string wktOf(PJ_CONTEXT* context, const PJ* system)
{
    const char* const oneLine[] = {"MULTILINE=NO", nullptr};
    // Most programs read the older form. A few systems exist only in the newer one.
    for (const PJ_WKT_TYPE form : {PJ_WKT1_GDAL, PJ_WKT2_2019})
        if (const char* text = proj_as_wkt(context, system, form, oneLine))
            return text;
    return {};
}

/// Finds a system in a catalogue by its code.
ObjectPtr catalogued(PJ_CONTEXT* context, int wkid)
{
    for (const char* catalogue : kCatalogues)
        if (PJ* found = proj_create_from_database(context, catalogue, std::to_string(wkid).c_str(),
                                                  PJ_CATEGORY_CRS, 0, nullptr))
            return ObjectPtr(found);
    return nullptr;
}

/// The id at the end of a name, as in "SAD69 (4291)", or -1.
int idInName(const std::string& name)
{
    const auto open = name.rfind('(');
    if (open == name.npos || !name.ends_with(')'))
        return -1;
    return numberOf(name.substr(open + 1, name.size() - open - 2).c_str());
}

} // namespace

ContextPtr newContext()
{
    ContextPtr context(proj_context_create());
    proj_log_level(context.get(), PJ_LOG_NONE);
    // Without network access, a job always gives the same points.
    proj_context_set_enable_network(context.get(), 0);
    return context;
}

ObjectPtr createSystem(PJ_CONTEXT* context, const CoordinateSystem& system)
{
    ObjectPtr made;
    if (system.wkid > 0)
        made = catalogued(context, system.wkid);
    if (!made && !system.wkt.empty())
        made.reset(proj_create(context, system.wkt.c_str()));
    if (!made)
        throw GeographyError(GeographyError::UnknownSystem,
                             "there is no coordinate system " + std::to_string(system.wkid));
    return made;
}

std::optional<CoordinateSystem> describe(PJ_CONTEXT* context, const PJ* system, int wkid)
{
    const PJ_TYPE type = proj_get_type(system);
    const bool isProjected = type == PJ_TYPE_PROJECTED_CRS;
    if (!isProjected && type != PJ_TYPE_GEOGRAPHIC_2D_CRS && type != PJ_TYPE_GEOGRAPHIC_3D_CRS)
        return std::nullopt;
    return CoordinateSystem{wkid, proj_get_name(system), wktOf(context, system), isProjected};
}

const std::vector<CataloguedSystem>& CoordinateSystems::all()
{
    std::call_once(_read, [this] {
        const ContextPtr context = newContext();
        for (int rank = 0; rank < static_cast<int>(std::size(kCatalogues)); ++rank)
            readCatalogue(context.get(), rank, _all);
    });
    return _all;
}

std::vector<std::string> CoordinateSystems::names(bool projected)
{
    std::set<std::string> names;
    for (const CataloguedSystem& system : all())
        if (system.isProjected == projected)
            names.insert(system.name);
    if (names.empty())
        throw GeographyError(GeographyError::Unreadable,
                             "the catalogue of coordinate systems cannot be read");
    return {names.begin(), names.end()};
}

std::optional<CoordinateSystem> CoordinateSystems::findIn(PJ_CONTEXT* context,
                                                          const std::string& name,
                                                          const char* catalogue,
                                                          Status status) const
{
    const ListPtr list(proj_create_from_name(context, catalogue, name.c_str(), kTypes,
                                             std::size(kTypes), 0, 0, nullptr));
    std::optional<CoordinateSystem> alias;
    const int count = list ? proj_list_get_count(list.get()) : 0;
    for (int i = 0; i < count; ++i) {
        const ObjectPtr system(proj_list_get(context, list.get(), i));
        const char* code = proj_get_id_code(system.get(), 0);
        const bool isDeprecated = proj_is_deprecated(system.get()) != 0;
        if (!code || isDeprecated != (status == Status::Deprecated))
            continue;
        auto found = describe(context, system.get(), numberOf(code));
        if (found && strcasecmp(found->name.c_str(), name.c_str()) == 0)
            return found;
        if (!alias && !isDeprecated)
            alias = std::move(found);
    }
    return alias;
}

/// Systems in force come first. A deprecated system may have a common name but give different
/// points.
std::optional<CoordinateSystem> CoordinateSystems::find(PJ_CONTEXT* context,
                                                        const std::string& name) const
{
    for (const Status status : {Status::InForce, Status::Deprecated})
        for (const char* catalogue : kCatalogues)
            if (auto found = findIn(context, name, catalogue, status))
                return found;
    return std::nullopt;
}

CoordinateSystem CoordinateSystems::named(const std::string& name)
{
    const ContextPtr context = newContext();
    if (auto found = find(context.get(), name))
        return *std::move(found);
    if (const int wkid = idInName(name); wkid > 0) {
        CoordinateSystem system = of(wkid);
        if (strcasecmp(system.name.c_str(), name.c_str()) == 0)
            return system;
    }
    throw GeographyError(GeographyError::UnknownSystem,
                         "there is no coordinate system \"" + name + "\"");
}

CoordinateSystem CoordinateSystems::of(int wkid)
{
    const ContextPtr context = newContext();
    if (const ObjectPtr system = catalogued(context.get(), wkid))
        if (auto found = describe(context.get(), system.get(), wkid)) {
            if (proj_is_deprecated(system.get()))
                if (const auto other = find(context.get(), found->name);
                    other && other->wkid != wkid && other->name == found->name)
                    found->name += " (" + std::to_string(wkid) + ")";
            return *std::move(found);
        }
    throw GeographyError(GeographyError::UnknownSystem,
                         "there is no geographic or projected coordinate system with the id " +
                             std::to_string(wkid));
}

} // namespace EmbeddedHV::maps
