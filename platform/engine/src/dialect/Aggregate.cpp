#include "dialect/Aggregate.h"

namespace EmbeddedHV {

std::string keyPlaces(const std::vector<AggregateColumn>& columns, const std::string& suffix)
{
    std::string places;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].call.function == Aggregate::Key)
            places += (places.empty() ? "" : ", ") + std::to_string(i + 1) + suffix;
    return places;
}

} // namespace EmbeddedHV
