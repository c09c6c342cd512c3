#include "datafile/FileColumns.h"

#include <utility>

namespace datafile {

void makeNamesUnique(Fields& fields)
{
    std::vector<std::string> names;
    for (const CFField& field : fields)
        names.push_back(field.GetName());
    names = uniqueNames(std::move(names));
    for (std::size_t i = 0; i < fields.size(); ++i)
        fields[i].SetName(names[i]);
}

} // namespace datafile
