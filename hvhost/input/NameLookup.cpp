#include "hvhost/input/NameLookup.h"

#include <algorithm>

#include "datafile/FieldNames.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/Text.h"

std::size_t placeOfName(const std::string& name, const std::vector<std::string>& known,
                        const NamedThing& thing)
{
    if (const auto exact = std::find(known.begin(), known.end(), name); exact != known.end())
        return static_cast<std::size_t>(exact - known.begin());
    std::string candidates;
    std::size_t count = 0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < known.size(); ++i)
        if (datafile::isSameName(known[i], name)) {
            candidates += (count++ == 0 ? "" : ", ") + known[i];
            place = i;
        }
    if (count == 1)
        return place;
    const std::string quoted = thing.word + " \"" + name + "\"";
    if (count == 0)
        throw CommandFault(ExitStatus::Usage, thing.origin + ": there is no " + quoted,
                           nearestHint(known, name, thing.hint));
    throw CommandFault(ExitStatus::Usage, thing.origin + ": the " + quoted + " is ambiguous",
                       "names that differ only in letter case: " + candidates);
}
