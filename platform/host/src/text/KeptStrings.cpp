#include "text/KeptStrings.h"

#include <mutex>
#include <set>

const std::string& keepString(const std::string& text)
{
    static std::mutex mutex;
    static std::set<std::string> kept;
    const std::lock_guard lock(mutex);
    return *kept.insert(text).first;
}
