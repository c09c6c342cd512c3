#pragma once

#include <cstdint>
#include <map>
#include <mutex>

namespace EmbeddedHV {

/// Objects that a statement names by number, because SQL can pass only values to a function.
///
/// The database may call the function of a statement after the object is gone. It then finds
/// nothing; a pointer in the SQL would be invalid. Any thread.
template <class Object>
class NumberedObjects
{
public:
    /// Borrows the object until it is removed. Returns a number that was not used before.
    std::int64_t add(Object& object)
    {
        const std::lock_guard lock(_mutex);
        _known.emplace(_nextId, &object);
        return _nextId++;
    }
    void remove(std::int64_t id)
    {
        const std::lock_guard lock(_mutex);
        _known.erase(id);
    }
    /// Null if the object was removed.
    Object* find(std::int64_t id)
    {
        const std::lock_guard lock(_mutex);
        const auto found = _known.find(id);
        return found == _known.end() ? nullptr : found->second;
    }

private:
    std::mutex _mutex;
    std::map<std::int64_t, Object*> _known;
    std::int64_t _nextId = 1;
};

} // namespace EmbeddedHV
