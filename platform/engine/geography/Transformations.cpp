#include "Transformations.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "Antimeridian.h"
#include "base/ListText.h"

namespace EmbeddedHV::maps {
namespace {

constexpr std::string_view kInverse = "Inverse of ";
constexpr std::string_view kJoint = " + ";
constexpr int kEdgePoints = 21; // on each side of a rectangle, because sides become curves

struct FactoryDeleter
{
    void operator()(PJ_OPERATION_FACTORY_CONTEXT* factory) const
    {
        proj_operation_factory_context_destroy(factory);
    }
};
using FactoryPtr = std::unique_ptr<PJ_OPERATION_FACTORY_CONTEXT, FactoryDeleter>;

/// All operations whose grid files are available.
ListPtr operationsBetween(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                          const std::optional<Area>& area)
{
    const FactoryPtr factory(proj_create_operation_factory_context(context, nullptr));
    proj_operation_factory_context_set_grid_availability_use(
        context, factory.get(), PROJ_GRID_AVAILABILITY_DISCARD_OPERATION_IF_MISSING_GRID);
    proj_operation_factory_context_set_spatial_criterion(
        context, factory.get(), PROJ_SPATIAL_CRITERION_PARTIAL_INTERSECTION);
    if (area)
        proj_operation_factory_context_set_area_of_interest(context, factory.get(), area->west,
                                                            area->south, area->east, area->north);
    return ListPtr(proj_create_operations(context, from, to, factory.get()));
}

/// The parts of a name, in order: projections and transformations.
std::vector<std::string_view> partsOf(std::string_view name)
{
    std::vector<std::string_view> parts;
    for (auto at = name.find(kJoint); at != std::string_view::npos; at = name.find(kJoint)) {
        parts.push_back(name.substr(0, at));
        name.remove_prefix(at + kJoint.size());
    }
    parts.push_back(name);
    return parts;
}

bool isForward(std::string_view name)
{
    return !name.starts_with(kInverse);
}

std::string_view plainName(std::string_view name)
{
    return isForward(name) ? name : name.substr(kInverse.size());
}

/// Whether the operation uses the transformation `method`, in either direction.
bool uses(std::string_view operation, std::string_view method)
{
    if (plainName(operation) == plainName(method))
        return true;
    return std::ranges::any_of(partsOf(operation), [&](std::string_view part) {
        return plainName(part) == plainName(method);
    });
}

ObjectPtr datumSystem(PJ_CONTEXT* context, const PJ* system)
{
    return ObjectPtr(proj_crs_get_geodetic_crs(context, system));
}

[[noreturn]] void refuseMethod(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                               const std::string& method)
{
    const auto known = methodsBetween(context, datumSystem(context, from).get(),
                                      datumSystem(context, to).get(), std::nullopt);
    throw GeographyError(
        GeographyError::UnknownMethod,
        "there is no transformation \"" + method + "\" between " + proj_get_name(from) + " and " +
            proj_get_name(to) +
            (known.empty()
                 ? ""
                 : "; known are " + base::quotedList(known, &TransformationMethod::name)));
}

ObjectPtr operationNamed(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                         const std::string& method)
{
    const ListPtr operations = operationsBetween(context, from, to, std::nullopt);
    const int count = operations ? proj_list_get_count(operations.get()) : 0;
    for (int i = 0; i < count; ++i) {
        ObjectPtr operation(proj_list_get(context, operations.get(), i));
        const char* name = proj_get_name(operation.get());
        if (name && uses(name, method))
            return operation;
    }
    refuseMethod(context, from, to, method);
}

/// Transforms all points in one call. x goes east, y goes north.
class ProjMover : public PointMover
{
public:
    ProjMover(ContextPtr context, ObjectPtr operation, bool leadsToGlobe)
        : _context(std::move(context)), _operation(std::move(operation)),
          _leadsToGlobe(leadsToGlobe)
    {
    }

    void move(double* x, double* y, double* z, std::size_t count) override
    {
        constexpr std::size_t kStep = sizeof(double);
        proj_errno_reset(_operation.get());
        proj_trans_generic(_operation.get(), PJ_FWD, x, kStep, count, y, kStep, count, z, kStep,
                           count, nullptr, 0, 0);
    }

    bool leadsToGlobe() const override { return _leadsToGlobe; }
    bool cutAtAntimeridian(std::string& shape) override { return maps::cutAtAntimeridian(shape); }

    std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& before) override
    {
        double left = 0;
        double bottom = 0;
        double right = 0;
        double top = 0;
        if (!proj_trans_bounds(_context.get(), _operation.get(), PJ_FWD, before.leftUpperX,
                               before.rightLowerY, before.rightLowerX, before.leftUpperY, &left,
                               &bottom, &right, &top, kEdgePoints) ||
            !std::isfinite(left + bottom + right + top))
            return std::nullopt;
        return CFGeo::Envelope{left, top, right, bottom};
    }

private:
    ContextPtr _context;
    ObjectPtr _operation;
    bool _leadsToGlobe;
};

/// Whether the unit of a geographic system is the degree. Some systems use grads.
bool isInDegrees(PJ_CONTEXT* context, const PJ* system)
{
    constexpr double kRadian = std::numbers::pi / 180.0;
    const ObjectPtr axes(proj_crs_get_coordinate_system(context, system));
    double unit = 0;
    return axes &&
           proj_cs_get_axis_info(context, axes.get(), 0, nullptr, nullptr, nullptr, &unit, nullptr,
                                 nullptr, nullptr) &&
           std::fabs(unit - kRadian) < kRadian / 1e6;
}

} // namespace

std::vector<TransformationMethod> methodsBetween(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                                                 const std::optional<Area>& area)
{
    std::vector<TransformationMethod> methods;
    if (!from || !to ||
        proj_is_equivalent_to_with_ctx(context, from, to,
                                       PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS))
        return methods;
    const ListPtr operations = operationsBetween(context, from, to, area);
    const int count = operations ? proj_list_get_count(operations.get()) : 0;
    for (int i = 0; i < count; ++i) {
        const ObjectPtr operation(proj_list_get(context, operations.get(), i));
        const char* name = proj_get_name(operation.get());
        // A ballpark operation only assumes that the datums are equal. It is not a transformation.
        if (!name || proj_coordoperation_has_ballpark_transformation(context, operation.get()))
            continue;
        methods.push_back({std::string(plainName(name)), isForward(name)});
    }
    return methods;
}

std::unique_ptr<PointMover> makeMover(const CoordinateSystem& from, const CoordinateSystem& to,
                                      const std::string& method)
{
    ContextPtr context = newContext();
    const ObjectPtr source = createSystem(context.get(), from);
    const ObjectPtr target = createSystem(context.get(), to);
    ObjectPtr operation =
        method.empty() ? ObjectPtr(proj_create_crs_to_crs_from_pj(context.get(), source.get(),
                                                                  target.get(), nullptr, nullptr))
                       : operationNamed(context.get(), source.get(), target.get(), method);
    if (operation)
        // In many catalogued systems latitude comes first. Maps have x before y.
        operation.reset(proj_normalize_for_visualization(context.get(), operation.get()));
    if (!operation)
        throw GeographyError(GeographyError::UnknownMethod,
                             std::string("there is no way from ") + proj_get_name(source.get()) +
                                 " to " + proj_get_name(target.get()));
    const bool leadsToGlobe = proj_get_type(source.get()) == PJ_TYPE_PROJECTED_CRS &&
                              proj_get_type(target.get()) != PJ_TYPE_PROJECTED_CRS &&
                              isInDegrees(context.get(), target.get());
    return std::make_unique<ProjMover>(std::move(context), std::move(operation), leadsToGlobe);
}

} // namespace EmbeddedHV::maps
