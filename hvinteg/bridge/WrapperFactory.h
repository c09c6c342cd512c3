#pragma once

#include <memory>

#include "bridge/JNIHvlAccessor.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/LocalRef.h"

/// Makes the wrappers of the objects that Java calls return. They belong to the manager's clean
/// list, so the caller of a factory operation never deletes one.
class WrapperFactory
{
public:
    /// For a class that holds a global reference.
    template <class Wrapper>
    static Wrapper* wrapGlobal(const LocalRef<>& result)
    {
        return adopt(new Wrapper(result.get())); // its constructor is closed to make_unique
    }

    /// For a class that holds the local reference itself.
    template <class Wrapper>
    static Wrapper* wrapLocal(LocalRef<>&& result)
    {
        return adopt(new Wrapper(result.release()));
    }

private:
    template <class Wrapper>
    static Wrapper* adopt(Wrapper* wrapper)
    {
        std::unique_ptr<Wrapper> owned(wrapper);
        JNIObjectManager* const manager = JNIObjectManager::getManager();
        // It belongs to the manager from here on, even if there is no memory for the list.
        manager->addtoCleanList(owned.release());
        return wrapper;
    }
};
