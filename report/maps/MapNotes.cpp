#include "report/maps/MapNotes.h"

#include <algorithm>
#include <ostream>

#include "Translation.h"
#include "report/document/PageText.h"

namespace {

constexpr std::size_t kNamedKeys = 12;

void writeNote(std::ostream& out, const std::string& key, const std::string& what)
{
    out << "<p class=\"message level1\" role=\"note\">" << escaped(translate(key)) << ": "
        << isolated(what) << "</p>\n";
}

/// The first ones by name, and the total number if there are more.
std::string listOf(const std::vector<std::string>& keys)
{
    std::string names;
    for (std::size_t at = 0; at < std::min(keys.size(), kNamedKeys); ++at)
        names += (at > 0 ? ", " : "") + shortened(keys[at]);
    if (keys.size() > kNamedKeys)
        names += ", … (" + std::to_string(keys.size()) + ")";
    return names;
}

} // namespace

void writeMapNotes(std::ostream& out, const MapItems& items)
{
    if (items.withoutShape > 0)
        writeNote(out, "Left out, without a shape that can be drawn",
                  std::to_string(items.withoutShape));
    if (!items.unplaced.empty())
        writeNote(out, "Without an area on the map", listOf(items.unplaced));
}
