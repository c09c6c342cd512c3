#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <proj.h>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// Lets a context of PROJ go; a context belongs to one thread.
struct ContextDeleter
{
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using ContextPtr = std::unique_ptr<PJ_CONTEXT, ContextDeleter>;

/// Lets a coordinate system or an operation of PROJ go, before its context.
struct ObjectDeleter
{
    void operator()(PJ* object) const { proj_destroy(object); }
};
using ObjectPtr = std::unique_ptr<PJ, ObjectDeleter>;

/// Lets a list of such objects go.
struct ListDeleter
{
    void operator()(PJ_OBJ_LIST* list) const { proj_list_destroy(list); }
};
using ListPtr = std::unique_ptr<PJ_OBJ_LIST, ListDeleter>;

/// A context that prints nothing and fetches nothing.
ContextPtr newContext();
/// The system as PROJ has it: from its catalogues by wkid, else from its well-known text. Throws
/// GeographyError.
ObjectPtr createSystem(PJ_CONTEXT* context, const CoordinateSystem& system);
/// What is known of a system of PROJ's; nullopt for one that is neither geographic nor projected.
std::optional<CoordinateSystem> describe(PJ_CONTEXT* context, const PJ* system, int wkid);

/// One system of the catalogues, by what tells where it may be used.
struct CataloguedSystem
{
    std::string name;
    int wkid = -1;
    bool isProjected = false;
    int rank = 0; ///< of its catalogue; the lower counts
    std::optional<Area> area;
};

/// The coordinate systems of PROJ's catalogues that have a wkid. Any thread.
class CoordinateSystems
{
public:
    /// All that are in force. Read once.
    const std::vector<CataloguedSystem>& all();
    std::vector<std::string> names(bool projected);
    /// By its name, or one of the names that other software gives it; letter case does not count.
    /// A deprecated system is found where no system in force has the name.
    CoordinateSystem named(const std::string& name);
    /// A deprecated system that shares its name with another one has its id in its name, as in
    /// "SAD69 (4291)", so that the name leads back to it.
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
