#include "spark/SparkColumns.h"

#include <nlohmann/json.hpp>

namespace EmbeddedHV {

std::vector<SparkColumn> sparkColumns(const std::string& json)
{
    std::vector<SparkColumn> columns;
    for (const auto& column : nlohmann::json::parse(json))
        columns.push_back({column.at("name"), column.at("type")});
    return columns;
}

} // namespace EmbeddedHV
