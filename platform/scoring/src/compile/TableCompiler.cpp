#include <algorithm>
#include <array>
#include <utility>

#include "compile/ExpressionCompiler.h"
#include "expression/Norms.h"
#include "pmml/DataType.h"
#include "pmml/Literal.h"
#include "pmml/ModelFault.h"
#include "pmml/PmmlDocument.h"
#include "values/CellText.h"

namespace scoring {
namespace {

constexpr std::array<std::pair<std::string_view, Outliers>, 4> kOutliers{{
    {"", Outliers::AsIs},
    {"asIs", Outliers::AsIs},
    {"asMissingValues", Outliers::AsMissing},
    {"asExtremeValues", Outliers::AsExtremes},
}};

/// Rejects an unknown word, because the default would be a guess.
Outliers outliersOf(pugi::xml_node element)
{
    const std::string_view word = element.attribute("outliers").value();
    for (const auto& [known, outliers] : kOutliers)
        if (word == known)
            return outliers;
    throw ModelFault("unknown treatment of outliers \"" + std::string(word) + "\"");
}

/// A number or a boolean.
ExpressionPtr numberSource(pugi::xml_node element, const Scope& scope)
{
    return coerced(sourceOf(element, scope), ValueKind::Number);
}

/// The kind of a table's values: its own type, else the kind of the field, else numbers if all
/// values are numbers.
ValueKind tableKind(pugi::xml_node element, std::optional<ValueKind> wanted,
                    const std::vector<std::string>& values)
{
    if (const auto type = dataTypeOf(element))
        return type->kind;
    if (wanted)
        return *wanted;
    const bool areNumbers = std::all_of(values.begin(), values.end(), [](const std::string& text) {
        return parseNumber(text).has_value();
    });
    return areNumbers ? ValueKind::Number : ValueKind::Text;
}

/// The table inside the element. Tables in other places are not supported.
pugi::xml_node inlineTable(pugi::xml_node element)
{
    const pugi::xml_node table = elementIn(element, "InlineTable");
    if (!table)
        throw ModelFault("<MapValues> has no <InlineTable>");
    return table;
}

/// Empty if the row does not have the column.
std::optional<std::string> valueIn(pugi::xml_node row, const std::string& column)
{
    // Columns may be in a namespace; then their names have its prefix.
    const std::size_t colon = column.find(':');
    const pugi::xml_node cell =
        elementIn(row, colon == std::string::npos ? column : column.substr(colon + 1));
    return cell ? std::optional(textOf(cell)) : std::nullopt;
}

/// The text in a column of a row. Throws if the row does not have the column.
std::string cellOf(pugi::xml_node row, const std::string& column)
{
    auto value = valueIn(row, column);
    if (!value)
        throw ModelFault("a row of a table has no column \"" + column + "\"");
    return *std::move(value);
}

} // namespace

/// The points must ascend: a line between two points with the same x has no slope.
ExpressionPtr ExpressionCompiler::normContinuous(Element element, const Scope& scope, Wanted)
{
    std::vector<NormContinuous::Point> points;
    for (const Element point : elementsIn(element, "LinearNorm")) {
        points.push_back({requiredNumber(point, "orig"), requiredNumber(point, "norm")});
        if (points.size() > 1 && points.back().original <= points[points.size() - 2].original)
            throw ModelFault("the points of <NormContinuous> do not ascend");
    }
    if (points.size() < 2)
        throw ModelFault("<NormContinuous> needs two points");
    return std::make_unique<NormContinuous>(
        numberSource(element, scope), std::move(points), outliersOf(element),
        attributeConstant(element, "mapMissingTo", ValueKind::Number));
}

ExpressionPtr ExpressionCompiler::normDiscrete(Element element, const Scope& scope, Wanted)
{
    ExpressionPtr source = sourceOf(element, scope);
    ExpressionPtr category = constantOf(required(element, "value"), source->kind());
    return std::make_unique<NormDiscrete>(
        std::move(source), std::move(category),
        attributeConstant(element, "mapMissingTo", ValueKind::Number));
}

ExpressionPtr ExpressionCompiler::discretize(Element element, const Scope& scope, Wanted wanted)
{
    const std::vector<Element> elements = elementsIn(element, "DiscretizeBin");
    std::vector<std::string> values;
    values.reserve(elements.size());
    for (const Element bin : elements)
        values.push_back(required(bin, "binValue"));
    const ValueKind kind = tableKind(element, wanted, values);
    std::vector<Discretize::Bin> bins;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element interval = elementIn(elements[i], "Interval");
        if (!interval)
            throw ModelFault("a bin has no <Interval>");
        bins.push_back({intervalOf(interval), constantOf(values[i], kind)});
    }
    return std::make_unique<Discretize>(kind, numberSource(element, scope), std::move(bins),
                                        treatmentOf(element, kind));
}

/// Keys are converted to the kinds of their fields, so that 2.0 in the table matches 2 in the data.
ExpressionPtr ExpressionCompiler::mapValues(Element element, const Scope& scope, Wanted wanted)
{
    const std::string outputColumn = required(element, "outputColumn");
    Expressions sources;
    std::vector<std::string> columns;
    for (const Element pair : elementsIn(element, "FieldColumnPair")) {
        sources.push_back(sourceOf(pair, scope));
        columns.push_back(required(pair, "column"));
    }
    if (sources.empty())
        throw ModelFault("<MapValues> has no <FieldColumnPair>");
    const std::vector<Element> elements = elementsIn(inlineTable(element), "row");
    std::vector<std::string> values;
    values.reserve(elements.size());
    for (const Element row : elements)
        values.push_back(cellOf(row, outputColumn));
    const ValueKind kind = tableKind(element, wanted, values);
    std::vector<MapValues::Row> rows;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        MapValues::Row row{{}, constantOf(values[i], kind)};
        for (std::size_t key = 0; key < columns.size(); ++key)
            row.keys.push_back(constantOf(cellOf(elements[i], columns[key]), sources[key]->kind()));
        rows.push_back(std::move(row));
    }
    return std::make_unique<MapValues>(kind, std::move(sources), std::move(rows),
                                       treatmentOf(element, kind));
}

} // namespace scoring
