#include "hvhost/tcm/OutlierTable.h"

#include "hvhost/tcm/SeriesText.h"

std::string pointTextOf(const nlohmann::ordered_json& point)
{
    if (point.is_string())
        return point.get<std::string>();
    if (!point.is_structured())
        return point.dump();
    std::string text;
    for (const nlohmann::ordered_json& part : point)
        text += (text.empty() ? "" : " ") + pointTextOf(part);
    return text;
}

ResultTable outlierTable(const nlohmann::ordered_json& outliers)
{
    ResultTable table;
    table.columns = {{"series", CFField::String}, {"time", CFField::String},
                     {"actual", CFField::Real},   {"predicted", CFField::Real},
                     {"residual", CFField::Real}, {"p", CFField::Real}};
    table.keyCount = 2;
    for (const nlohmann::ordered_json& outlier : outliers)
        table.rows.push_back({seriesText(outlier.at("name").get<SeriesName>()),
                              pointTextOf(outlier.at("time")), tcmNumber(outlier.at("actual")),
                              tcmNumber(outlier.at("predicted")), tcmNumber(outlier.at("residual")),
                              tcmNumber(outlier.at("pValue"))});
    return table;
}
