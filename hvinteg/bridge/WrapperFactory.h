#pragma once

#include <memory>

#include "bridge/JNIHvlAccessor.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/LocalRef.h"

/// Creates wrappers of objects that Java calls return. The manager owns them, so callers never
/// delete one.
class WrapperFactory
{
public:
    /// For classes that hold a global reference.
    template <class Wrapper>
    static Wrapper* wrapGlobal(const LocalRef<>& result)
    {
        return adopt(new Wrapper(result.get())); // private, not for make_unique
    }

    /// For classes that hold the local reference itself.
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
        // From here on the manager owns it, even if there is no memory for the list.
        manager->addtoCleanList(owned.release());
        return wrapper;
    }
};
