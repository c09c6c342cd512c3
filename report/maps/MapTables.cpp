#include "report/maps/MapTables.h"

#include <set>

#include "report/document/JsonTables.h"

namespace {

/// Features without their shapes, which have no use in a table.
PageJson propertiesOf(const PageJson& features)
{
    PageJson rows = PageJson::array();
    for (const PageJson& feature : features)
        if (const PageJson* properties = memberOf(feature, "properties");
            properties && properties->is_object() && !properties->empty())
            rows.push_back(*properties);
    return rows;
}

} // namespace

void writeMapTables(std::ostream& out, const MapSpec& spec, MapSources& sources,
                    const std::string& title)
{
    std::set<const PageJson*> written;
    for (const MapLayer& layer : spec.layers) {
        const MapSource& source = layer.join ? layer.join->rows : layer.source;
        const PageJson& records = sources.records(source);
        if (!written.insert(&records).second)
            continue;
        const bool isOfRows = layer.join || (layer.isOfPoints() && source.values);
        const PageJson rows = isOfRows ? records : propertiesOf(records);
        if (!rows.empty())
            writeArray(out, source.name.empty() ? title : source.name, rows);
    }
}
