#include "steps/FeatureText.h"

#include <cmath>

#include <nlohmann/json.hpp>

#include "base/NumberText.h"
#include "maps/ShapeText.h"

namespace EmbeddedHV {
std::string jsonText(std::string_view text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

FeatureColumns::FeatureColumns(const RecordBatch& batch, const Fields& fields, std::size_t shapes)
    : _shapes(shapes)
{
    for (std::size_t i = 0; i < fields.size(); ++i)
        _columns.push_back({jsonText(fields[i].GetName()) + ":", fields[i].GetStorage(),
                            fields[i].GetGeo() != nullptr, batch.column(i)});
}

void FeatureColumns::appendValue(const Column& column, std::size_t row, std::string& out) const
{
    if (column.values.isMissing(row)) {
        out += "null";
    } else if (column.storage == CFField::Integer) {
        base::appendNumber(out, static_cast<const std::int64_t*>(column.values.data)[row]);
    } else if (column.storage == CFField::Real) {
        const double value = static_cast<const double*>(column.values.data)[row];
        // JSON has no infinite or not-a-number values.
        if (std::isfinite(value))
            base::appendNumber(out, value);
        else
            out += "null";
    } else {
        const std::string_view text = column.values.textAt(row);
        if (column.isShape && maps::isShape(text))
            out += text;
        else
            out += jsonText(text);
    }
}

bool FeatureColumns::append(std::size_t row, std::string& out) const
{
    out += R"({"type":"Feature","properties":{)";
    bool isFirst = true;
    for (std::size_t i = 0; i < _columns.size(); ++i) {
        if (i == _shapes)
            continue;
        out += isFirst ? "" : ",";
        isFirst = false;
        out += _columns[i].key;
        appendValue(_columns[i], row, out);
    }
    out += R"(},"geometry":)";
    const std::size_t begin = out.size();
    appendValue(_columns[_shapes], row, out);
    out += '}';
    // A text that is not a shape was written in quotes.
    return out[begin] != '"';
}

} // namespace EmbeddedHV
