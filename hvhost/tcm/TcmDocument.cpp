#include "hvhost/tcm/TcmDocument.h"

#include <cstdlib>
#include <filesystem>

#include "TnOutput.h"
#include "hvhost/show/DocumentItems.h"
#include "hvhost/show/Rendering.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/tcm/TcmOutput.h"

namespace {

using TcmJson = nlohmann::ordered_json;

constexpr const char* kTcmResult = "tcm";

/// Whether a page, which rounds, would show a p value as 0.
bool isTinyP(const std::optional<std::string>& cell, const ResultTable::Column& column)
{
    constexpr double kSmallestShown = 0.0001;
    return cell && (column.name == "p" || column.name.starts_with("p (")) &&
           std::strtod(cell->c_str(), nullptr) < kSmallestShown;
}

/// Numbers stay numbers, so that a page can sort and copy them.
struct TableCells
{
    TcmJson values = TcmJson::array();
    TcmJson labels = TcmJson::array();
    TcmJson formats = TcmJson::array();

    void add(const std::optional<std::string>& cell, const ResultTable::Column& column,
             const std::string& key)
    {
        if (!cell) {
            values.push_back(nullptr);
        } else if (isTinyP(cell, column)) {
            values.push_back(std::to_string(labels.size()));
            labels.push_back(word("< 0.0001"));
            formats.push_back({{"index", key}, {"format", {{"string", true}}}});
        } else if (column.isNumber()) {
            values.push_back(std::strtod(cell->c_str(), nullptr));
        } else {
            values.push_back(std::to_string(labels.size()));
            labels.push_back(*cell);
        }
    }
};

/// The first column names the rows.
TcmJson documentTable(const ResultTable& table, const std::string& id)
{
    constexpr int kDecimals = 4;
    const ResultTable shown = inWords(table);
    TcmJson rows = dimensionItem("", "row", false);
    rows.update(plainItem(shown.columns.front().name));
    TcmJson columns = dimensionItem("Columns", "column", true);
    TableCells cells;
    const std::size_t rowDigits = cellDigitsFor(table.rows.size());
    const std::string anyRow(rowDigits, '*');
    const std::size_t digits = cellDigitsFor(table.columns.size() - 1);
    for (std::size_t at = 1; at < table.columns.size(); ++at) {
        const ResultTable::Column& column = table.columns[at];
        columns["children"].push_back(plainItem(shown.columns[at].name));
        if (column.isNumber())
            cells.formats.push_back(
                {{"index", anyRow + cellDigits(at - 1, digits)},
                 {"format", {{"decimals", column.storage == CFField::Integer ? 0 : kDecimals}}}});
    }
    for (std::size_t number = 0; number < shown.rows.size(); ++number) {
        const ResultTable::Row& row = shown.rows[number];
        rows["children"].push_back(plainItem(row.front().value_or("")));
        for (std::size_t at = 1; at < row.size(); ++at)
            cells.add(row[at], table.columns[at],
                      cellDigits(number, rowDigits) + cellDigits(at - 1, digits));
    }
    return {{"tableId", id},
            {"title", TcmJson::object()},
            {"dimensions", {rows, columns}},
            {"formats", cells.formats},
            {"cellLabels", {{"values", cells.labels}}},
            {"cells", {{{"cells", {{"compactCells", {{"value", cells.values}}}}}}}}};
}

bool hasContent(const TcmPart& part)
{
    return !part.chart.is_null() || !part.table.rows.empty();
}

} // namespace

std::shared_ptr<const OutputHeading> tcmOutput(HostSession& session, const TcmResult& result)
{
    TcmJson document = TcmJson::object();
    RenderOrder order;
    order.result = kTcmResult;
    for (const TcmPart& part : result.parts) {
        if (!hasContent(part))
            continue;
        const std::string key = "part" + std::to_string(order.objects.size() + 1);
        const bool isChart = !part.chart.is_null();
        document[key] = isChart ? part.chart : documentTable(part.table, "tcm." + key);
        OutputOrder& shown = order.objects.emplace_back().order;
        shown.setOutlineTitle(part.title, false).addLocation(key);
        if (isChart)
            shown.setType(OutputOrder::Chart);
        else if (!part.remarks.empty())
            shown.addTextToCaption(part.remarks);
    }
    const std::string text = TcmJson{{kTcmResult, std::move(document)}}.dump(
        -1, ' ', false, TcmJson::error_handler_t::replace);
    TnProcedure procedure(std::filesystem::path(result.name).filename().string());
    Rendering(session, procedure, result.name, text).render(order);
    return procedure.node();
}
