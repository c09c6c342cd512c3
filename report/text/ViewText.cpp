#include "report/text/ViewText.h"

#include <algorithm>
#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "OutputTree.h"
#include "Translation.h"
#include "report/charts/ChartSpec.h"
#include "report/document/PageDocument.h"
#include "report/text/ChartText.h"
#include "report/text/TextPage.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kDeepestView = 16;
constexpr std::size_t kIndent = 2;
constexpr const char* kDataModel = "0";

bool hasPlainElements(const Json& value)
{
    return std::all_of(value.begin(), value.end(),
                       [](const Json& element) { return element.is_primitive(); });
}

/// Whether a value is an array of flat objects, the rows of a table.
bool isRecords(const Json& value)
{
    return value.is_array() && std::all_of(value.begin(), value.end(), [](const Json& record) {
               return record.is_object() && hasPlainElements(record);
           });
}

/// A plot with all members of all records as columns, in order of appearance.
ChartPlot plotOf(const Json& records)
{
    ChartPlot plot;
    std::set<std::string> known;
    for (const Json& record : records) {
        plot.rows.push_back(&record);
        for (const auto& [key, value] : record.items())
            if (known.insert(key).second)
                plot.columns.push_back({key, key, {}});
    }
    return plot;
}

/// Short lists are easier to read on one line.
std::string inOneLine(const Json& array)
{
    std::string line;
    for (const Json& element : array)
        line += (line.empty() ? "" : ", ") +
                (element.is_null() ? std::string("null") : jsonCellText(element));
    return "[" + line + "]";
}

/// Writes JSON values with their members indented below them, and records and charts as tables.
class Outline
{
public:
    explicit Outline(TextPage& page) : _page(page) {}

    void write(const std::string& name, const Json& value, std::size_t depth)
    {
        if (isDrawable(value))
            chart(name, value, depth);
        else if (value.is_primitive())
            line(name, value.is_null() ? "null" : jsonCellText(value), depth);
        else if (value.is_array() && hasPlainElements(value))
            line(name, inOneLine(value), depth);
        else if (value.empty() || depth >= kDeepestView)
            line(name, value.empty() ? "{}" : "…", depth);
        else if (isRecords(value))
            table(name, plotOf(value), depth);
        else
            members(name, value, depth);
    }

private:
    void line(const std::string& name, const std::string& text, std::size_t depth)
    {
        _page.write(name + (text.empty() ? ":" : ": " + text), TextPage::Style::Plain,
                    std::string(depth * kIndent, ' '));
    }
    void table(const std::string& name, const ChartPlot& plot, std::size_t depth)
    {
        line(name, {}, depth);
        writePlot(plot, _page);
    }
    void chart(const std::string& name, const Json& specification, std::size_t depth)
    {
        const ChartSpec spec(Json{{"1", specification}}.dump());
        line(name, spec.title().empty() ? spec.description() : spec.title(), depth);
        for (const ChartPlot& plot : spec.plots())
            writePlot(plot, _page);
    }
    /// Elements of a list are named by their numbers.
    void members(const std::string& name, const Json& value, std::size_t depth)
    {
        line(name, {}, depth);
        std::size_t number = 1;
        for (const auto& [key, member] : value.items())
            write(value.is_array() ? std::to_string(number++) : key, member, depth + 1);
    }

    TextPage& _page;
};

} // namespace

void writeView(const OutputView& view, TextPage& page)
{
    page.beginBlock();
    if (!view.description.empty())
        page.write(view.description, TextPage::Style::Bold);
    page.write(view.procedureName + (view.path.empty() ? "" : ", " + view.path),
               TextPage::Style::Faint);
    const Json json = Json::parse(view.json, nullptr, false);
    if (!json.is_object()) {
        page.write(translate("What this was to show cannot be read."), TextPage::Style::Warning);
        return;
    }
    for (const auto& [key, value] : json.items())
        if (key != kDataModel)
            Outline(page).write(key, value, 0);
}
