#pragma once

#include <cstdint>
#include <map>
#include <mutex>

namespace EmbeddedHV {

/// Objects that a statement names by a number, which is all that SQL can hand to a function.
///
/// The database may still call the function of a statement whose object is gone: it then finds
/// nothing, where a pointer in the SQL would lead anywhere. Any thread.
template <class Object>
class NumberedObjects
{
public:
    /// The object is borrowed until removed. No number is given twice.
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
    /// Null for one that was removed.
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
