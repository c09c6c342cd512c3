#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <proj.h>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// Destroys a context of PROJ. A context belongs to one thread.
struct ContextDeleter
{
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using ContextPtr = std::unique_ptr<PJ_CONTEXT, ContextDeleter>;

/// Destroys a coordinate system or an operation of PROJ. Call it before its context is destroyed.
struct ObjectDeleter
{
    void operator()(PJ* object) const { proj_destroy(object); }
};
using ObjectPtr = std::unique_ptr<PJ, ObjectDeleter>;

/// Destroys a list of such objects.
struct ListDeleter
{
    void operator()(PJ_OBJ_LIST* list) const { proj_list_destroy(list); }
};
using ListPtr = std::unique_ptr<PJ_OBJ_LIST, ListDeleter>;

/// A context that prints nothing and uses no network.
ContextPtr newContext();
/// The system as a PROJ object: from its catalogues by wkid, else from its WKT text. Throws
/// GeographyError.
ObjectPtr createSystem(PJ_CONTEXT* context, const CoordinateSystem& system);
/// Describes a system of PROJ; empty if it is neither geographic nor projected.
std::optional<CoordinateSystem> describe(PJ_CONTEXT* context, const PJ* system, int wkid);

/// A system of the catalogues, and the area where it may be used.
struct CataloguedSystem
{
    std::string name;
    int wkid = -1;
    bool isProjected = false;
    int rank = 0; ///< of its catalogue; a lower rank takes precedence
    std::optional<Area> area;
};

/// The coordinate systems of PROJ's catalogues that have a wkid. Any thread.
class CoordinateSystems
{
public:
    /// All systems in force. Read on the first call.
    const std::vector<CataloguedSystem>& all();
    std::vector<std::string> names(bool projected);
    /// Finds a system by its name or an alias of other software. Ignores letter case. A deprecated
    /// system is found only if no system in force has the name.
    CoordinateSystem named(const std::string& name);
    /// Finds a system by its wkid. If a deprecated system shares its name with another, its name
    /// includes its id, for example "SAD69 (4291)", so that `named` finds it again.
    CoordinateSystem of(int wkid);

private:
    enum class Status
    {
        InForce,
        Deprecated
    };
    std::optional<CoordinateSystem> find(PJ_CONTEXT* context, const std::string& name) const;
    std::optional<CoordinateSystem> findIn(PJ_CONTEXT* context, const std::string& name,
                                           const char* catalogue, Status status) const;

    std::once_flag _read;
    std::vector<CataloguedSystem> _all;
};

} // namespace EmbeddedHV::maps
