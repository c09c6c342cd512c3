#include "maps/Reprojection.h"

#include <stdexcept>
#include <utility>

#include "ErrorIds.h"
#include "datafile/RaisedFault.h"
#include "maps/GeographyLibrary.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kShownBytes = 60; // of an invalid shape, in a message

} // namespace

class Reprojection::Lease
{
public:
    explicit Lease(Reprojection& owner) : _owner(owner)
    {
        {
            const std::lock_guard lock(owner._mutex);
            if (!owner._idle.empty()) {
                _mover = std::move(owner._idle.back());
                owner._idle.pop_back();
            } else {
                // Reserve room for all movers, so that the destructor does not allocate.
                owner._idle.reserve(++owner._made);
            }
        }
        if (!_mover)
            _mover = std::make_unique<maps::ShapeMover>(
                maps::geography().mover(owner._from, owner._to, owner._method));
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease()
    {
        const std::lock_guard lock(_owner._mutex);
        _owner._idle.push_back(std::move(_mover));
    }
    maps::ShapeMover& mover() { return *_mover; }

private:
    Reprojection& _owner;
    std::unique_ptr<maps::ShapeMover> _mover;
};

Reprojection::Reprojection(maps::CoordinateSystem from, maps::CoordinateSystem to,
                           std::string method)
    : _from(std::move(from)), _to(std::move(to)), _method(std::move(method))
{
    // Rejects unknown systems and methods before a record is read.
    const Lease tried(*this);
}

bool Reprojection::call(std::string_view text, std::string& out)
{
    Lease lease(*this);
    switch (lease.mover().move(text, out)) {
    case maps::MovedShape::Moved:
        break;
    case maps::MovedShape::Lost:
        ++_lost;
        return false;
    case maps::MovedShape::NotAShape:
        throw std::runtime_error(raisedText(
            errors::kNotAShape, {.step = "reprojection",
                                 .what = "a value is not a shape: \"" +
                                         std::string(text.substr(0, kShownBytes)) + "\""}));
    }
    return true;
}

bool Reprojection::movePoints(maps::Shape& shape, std::string& out)
{
    Lease lease(*this);
    const bool exists = lease.mover().movePoints(shape, out) == maps::MovedShape::Moved;
    if (!exists)
        ++_lost;
    return exists;
}

std::optional<CFGeo::Envelope> Reprojection::moved(const CFGeo::Envelope& envelope)
{
    Lease lease(*this);
    return lease.mover().points().moved(envelope);
}

} // namespace EmbeddedHV
