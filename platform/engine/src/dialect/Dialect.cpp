#include "dialect/Dialect.h"

namespace EmbeddedHV {

std::string Dialect::columns(const datafile::Fields& fields) const
{
    std::string list;
    for (const CFField& field : fields)
        list += (list.empty() ? "" : ", ") + name(field.GetName());
    return list;
}

} // namespace EmbeddedHV
