#include "runtime/ResultColumns.h"

namespace EmbeddedHV {

std::string ResultColumns::selectFrom(const std::string& from,
                                      const std::function<std::string(const Finite&)>& value) const
{
    std::string list;
    auto next = finite.begin();
    for (const std::string& name : all) {
        list += list.empty() ? "" : ", ";
        if (next != finite.end() && next->name == name)
            list += value(*next++) + " AS ";
        list += name;
    }
    return "SELECT " + list + " FROM " + from;
}

} // namespace EmbeddedHV
