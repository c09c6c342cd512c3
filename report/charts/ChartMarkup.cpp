#include "report/charts/ChartMarkup.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "Translation.h"
#include "report/charts/NetworkMarkup.h"
#include "report/charts/ViewMarkup.h"
#include "report/document/JsonTables.h"
#include "report/document/PageText.h"
#include "report/maps/MapMarkup.h"

namespace {

/// The text of a title or description, which may be an object or a list of lines.
std::string textOf(const PageJson* value)
{
    if (!value)
        return {};
    if (value->is_string())
        return value->get<std::string>();
    if (value->is_object())
        return textOf(memberOf(*value, "text"));
    std::string lines;
    if (value->is_array())
        for (const PageJson& line : *value)
            lines += (lines.empty() ? "" : " ") + textOf(&line);
    return lines;
}

/// Values that are not a list are text in a format of the chart library; written unchanged.
void writeValues(std::ostream& out, const std::string& name, const PageJson& values)
{
    if (values.is_array() && !values.empty())
        writeArray(out, name, values);
    else if (values.is_string())
        out << "<pre>" << isolated(values.get_ref<const std::string&>()) << "</pre>\n";
}

/// Writes every set of values in the chart's JSON.
void writeData(std::ostream& out, const PageJson& part, const std::string& name)
{
    for (const auto& [key, value] : part.items()) {
        if (key == "data" && memberOf(value, "values"))
            writeValues(out, memberOf(value, "name") ? textOf(memberOf(value, "name")) : name,
                        *memberOf(value, "values"));
        else if (key == "datasets" && value.is_object())
            for (const auto& [set, values] : value.items())
                writeValues(out, set, values);
        else if (value.is_structured() && key != "encoding" && key != "values")
            writeData(out, value, name);
    }
}

/// Whether a part holds data, or names a set of them.
bool holdsData(const PageJson& part)
{
    return part.is_structured() &&
           std::any_of(part.items().begin(), part.items().end(), [](const auto& member) {
               return member.key() == "data" || member.key() == "datasets" ||
                      holdsData(member.value());
           });
}

/// Whether the page shows a text without a change.
bool isKept(const std::string& text)
{
    return std::none_of(text.begin(), text.end(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return code < 0x20 || code == 0x7F || code == 0xC2 || code >= 0xF5;
    });
}

bool isKeptValue(const PageJson& value)
{
    return value.is_number() || value.is_null() ||
           (value.is_string() && isKept(value.get_ref<const std::string&>()));
}

/// Whether the table of a chart's data is all that the script needs: flat records with the same
/// members, and no other data.
bool isInTable(const PageJson& specification)
{
    const PageJson* data = memberOf(specification, "data");
    const PageJson* values = data ? memberOf(*data, "values") : nullptr;
    if (!values || !isRecords(*values) || data->size() != 1)
        return false;
    for (const auto& [key, value] : specification.items())
        if (key != "data" && (key == "datasets" || holdsData(value)))
            return false;
    const PageJson& first = values->front();
    return std::all_of(values->begin(), values->end(), [&](const PageJson& record) {
        return record.size() == first.size() &&
               std::all_of(record.items().begin(), record.items().end(), [&](const auto& member) {
                   return isKept(member.key()) && first.contains(member.key()) &&
                          isKeptValue(member.value());
               });
    });
}

/// The specification as the script gets it. Data that are in the table are not repeated.
void writeSpecification(std::ostream& out, const PageJson& specification)
{
    const bool isShort = isInTable(specification);
    PageJson written = PageJson::object();
    if (isShort)
        for (const auto& [key, value] : specification.items())
            if (key != "data" && key != "$schema")
                written[key] = value;
    out << "<script type=\"application/json\" class=\"specification\""
        << (isShort ? " data-rows" : "") << ">" << scriptJson(isShort ? written : specification)
        << "</script>\n";
}

/// Includes the data of maps, because the page may not load anything.
void writeSources(std::ostream& out, const OutputDocument& document)
{
    for (const auto& [name, text] : document.geoJson)
        if (const std::optional<PageJson> geoJson = parseDocument(text))
            out << "<script type=\"application/json\" class=\"source\" data-name=\""
                << escaped(name) << "\">" << scriptJson(featuresOf(*geoJson)) << "</script>\n";
}

/// Writes the specification for the chart library, and the data for readers without scripts.
void writeForScript(std::ostream& out, const ChartDrawing& drawing, const std::string& title)
{
    out << "<div class=\"drawing\" hidden></div>\n";
    writeSpecification(out, drawing.specification);
    writeSources(out, drawing.source);
    out << "<details open><summary>" << escaped(translate("Data")) << "</summary>\n";
    writeData(out, drawing.specification, title);
    out << "</details>\n";
}

/// A note of the page in the style of an output warning.
void writeNote(std::ostream& out, const std::string& key)
{
    out << "<p class=\"message level2\" role=\"note\">" << escaped(translate(key)) << "</p>\n";
}

} // namespace

void writeDrawing(std::ostream& out, const ChartDrawing& drawing)
{
    const std::string description = textOf(memberOf(drawing.specification, "description"));
    const std::string given =
        drawing.title.empty() ? textOf(memberOf(drawing.specification, "title")) : drawing.title;
    const std::string title = given.empty() ? translate("Chart") : given;
    const PageJson* heading = memberOf(drawing.specification, "title");
    const std::string below = heading ? textOf(memberOf(*heading, "subtitle")) : "";
    const bool isMore = !description.empty() && description != title;
    out << "<figure class=\"chart\" id=\"" << drawing.anchor << "\">\n<figcaption>"
        << isolated(title);
    if (!below.empty())
        out << " <span class=\"detail\">" << isolated(below) << "</span>";
    if (isMore)
        out << " <span class=\"detail\">" << isolated(description) << "</span>";
    out << "</figcaption>\n";
    if (const std::optional<MapSpec> map = readMapSpec(drawing.specification, drawing.source))
        writeMap(out, *map, drawing.source, {title, isMore ? description : "", drawing.anchor});
    else if (std::optional<NetworkSpec> network = readNetworkSpec(drawing.specification))
        writeNetwork(out, std::move(*network), {title, isMore ? description : "", drawing.anchor});
    else
        writeForScript(out, drawing, given.empty() ? translate("Data") : given);
    out << "</figure>\n";
}

const PageJson* drawableOf(const PageJson* document)
{
    const PageJson* specification = document ? memberOf(*document, "1") : nullptr;
    return specification && isDrawable(*specification) ? specification : nullptr;
}

void writeChart(std::ostream& out, const OutputChart& chart, const PageJson* document,
                const std::string& anchor)
{
    if (const PageJson* specification = drawableOf(document)) {
        writeDrawing(out, {*specification, chart.description, anchor, chart});
        return;
    }
    const std::string title = chart.description.empty() ? translate("Chart") : chart.description;
    out << "<figure class=\"chart\" id=\"" << anchor << "\">\n<figcaption>" << isolated(title)
        << "</figcaption>\n";
    if (document) {
        writeNote(out, "This chart is of a kind that the page cannot draw.");
        writeJson(out, {title, anchor, chart}, *document);
    } else
        writeUnread(out, chart.templateJson);
    out << "</figure>\n";
}

void writeUnread(std::ostream& out, const std::string& text)
{
    writeNote(out, "What this was to show cannot be read.");
    out << "<pre tabindex=\"0\">" << isolated(text) << "</pre>\n";
}
