#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "maps/Geography.h"
#include "maps/ShapeText.h"

namespace EmbeddedHV {

/// Moves the shapes of a field from one coordinate system to another, on as many threads as the
/// database has.
class Reprojection
{
public:
    /// Throws GeographyError if there is no way between the systems.
    Reprojection(maps::CoordinateSystem from, maps::CoordinateSystem to, std::string method);

    /// See moveShape. Any thread.
    maps::MovedShape move(std::string_view text, std::string& out);
    /// The rectangle that holds whatever the given one held; nullopt if it has no place.
    std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& envelope);
    /// How many shapes were lost since the last time that this was asked.
    std::uint64_t takeLost() { return _lost.exchange(0); }

private:
    /// A mover for a scope, whose owner gives it back.
    class Lease;

    maps::CoordinateSystem _from;
    maps::CoordinateSystem _to;
    std::string _method;
    std::mutex _mutex;
    std::vector<std::unique_ptr<maps::PointMover>> _idle;
    std::size_t _made = 0; ///< movers; _idle has room for all of them
    std::atomic<std::uint64_t> _lost = 0;
};

} // namespace EmbeddedHV
