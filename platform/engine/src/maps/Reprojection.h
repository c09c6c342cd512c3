#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "maps/Geography.h"
#include "maps/ShapeText.h"
#include "runtime/TextFunctions.h"

namespace EmbeddedHV {

/// Transforms the shapes of a field between two coordinate systems.
class Reprojection : public TextFunction
{
public:
    /// Throws GeographyError if there is no transformation between the systems.
    Reprojection(maps::CoordinateSystem from, maps::CoordinateSystem to, std::string method);

    /// Transforms a GeoJSON geometry object. Returns false for a shape that is lost, and counts it.
    /// Throws if the text is not a shape.
    bool call(std::string_view text, std::string& out) override;
    /// Transforms the points of `shape` in place and writes the GeoJSON geometry object. Returns
    /// false for a shape that is lost, and counts it.
    bool movePoints(maps::Shape& shape, std::string& out);
    /// The rectangle that contains the transformed rectangle; empty if it does not exist in the
    /// target system.
    std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& envelope);
    /// How many shapes were lost since the previous call.
    std::uint64_t takeLost() { return _lost.exchange(0); }

private:
    /// Borrows a mover and returns it at the end of the scope.
    class Lease;

    maps::CoordinateSystem _from;
    maps::CoordinateSystem _to;
    std::string _method;
    std::mutex _mutex;
    std::vector<std::unique_ptr<maps::ShapeMover>> _idle;
    std::size_t _made = 0; ///< number of movers; _idle has room for all of them
    std::atomic<std::uint64_t> _lost = 0;
};

} // namespace EmbeddedHV
