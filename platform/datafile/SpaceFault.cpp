#include "datafile/SpaceFault.h"

#include <cerrno>

namespace datafile {
namespace {

struct SpaceFault
{
    int code;
    std::string_view phrase; ///< the system's text
    const char* text;
};

constexpr SpaceFault kSpaceFaults[] = {
    {ENOSPC, "No space left on device", "no space is left for the file"},
    {EDQUOT, "Disk quota exceeded", "the disk quota of the user does not allow a larger file"},
    {EFBIG, "File too large",
     "a limit on the size of files (ulimit -f) does not allow a larger file"},
};

} // namespace

const char* spaceFaultOf(int code)
{
    for (const SpaceFault& fault : kSpaceFaults)
        if (fault.code == code)
            return fault.text;
    return nullptr;
}

const char* spaceFaultIn(std::string_view databaseMessage)
{
    for (const SpaceFault& fault : kSpaceFaults)
        if (databaseMessage.find(fault.phrase) != std::string_view::npos)
            return fault.text;
    return nullptr;
}

} // namespace datafile
