#include "hvhost/describe/DescriptionOutput.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "FacSTDictionary.h"
#include "TnOutput.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/describe/Description.h"
#include "hvhost/describe/ResultLanguage.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/Rendering.h"
#include "hvhost/show/ResultWords.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kName = "descriptives";

/// Makes the orders for a group's result document, in the host's language.
class OrderMaker
{
public:
    explicit OrderMaker(const std::string& results)
        : _results(results), _document(Json::parse(results))
    {
        if (!_isTranslated)
            return;
        Json& result = _document[kName];
        translateTables(result);
        const auto pairs = result.find("pairs");
        if (pairs != result.end() && pairs->contains("chart"))
            translateChart((*pairs)["chart"], "", "Strength of Pairs");
    }

    /// The whole document, for `tables`.
    std::string document() const { return _isTranslated ? _document.dump() : _results; }

    /// The order for all tables of the whole document, and for the chart of pairs.
    RenderOrder tables(const std::vector<std::string>& facts, bool drawsAnalyses) const
    {
        RenderOrder order = emptyOrder();
        addTable(order, "statistics", "Descriptive Statistics");
        for (const std::string& fact : facts)
            if (!order.objects.empty())
                order.objects.front().order.addTextToCaption(fact);
        addTable(order, "percentiles", "Percentiles");
        addTable(order, "outliers", "Outliers");
        addTable(order, "missingPatterns", "Missing Patterns");
        addTable(order, "pairs", "Pairs of Fields");
        if (drawsAnalyses)
            addObject(order, {"pairs", "chart"}, OutputOrder::Chart, "Strength of Pairs");
        addTable(order, "intervals", "Time Intervals");
        const Parts frequencies = partsOf("frequencies");
        for (const Part& part : frequencies)
            addPart(order, "frequencies", part, OutputOrder::Pivot, "Frequencies");
        return order;
    }

    /// The bins of the histograms of numbers, for each field.
    std::vector<std::vector<ComparedBin>> histograms(std::size_t fields) const
    {
        std::vector<std::vector<ComparedBin>> all(fields);
        for (const Part& part : partsOf("histograms"))
            for (const Json& row : part.value->at("data").at("values")) {
                // The members are the ends of the bin and its count, whatever their names are.
                std::vector<double> numbers;
                for (const Json& value : row)
                    if (value.is_number())
                        numbers.push_back(value.get<double>());
                if (numbers.size() == 3)
                    all.at(std::stoul(part.key.substr(1)) - 1)
                        .push_back({numbers[0], numbers[1], numbers[2]});
            }
        return all;
    }

    /// Passes the charts to `render`, as result documents with their orders. The library adds the
    /// data model of a document to each of its charts, so each document has only some of the
    /// fields. With all, the output would grow with the square of the number of fields.
    void makeCharts(bool drawsAnalyses,
                    const std::function<void(const std::string&, const RenderOrder&)>& render) const
    {
        for (const auto& [name, heading] : kCharts) {
            if (name == kBoxes && !drawsAnalyses)
                continue;
            const Parts charts = partsOf(name);
            for (std::size_t from = 0; from < charts.size(); from += kFieldsOfDocument) {
                RenderOrder order = emptyOrder();
                Json document = emptyModel();
                for (std::size_t i = from; i < std::min(from + kFieldsOfDocument, charts.size());
                     ++i) {
                    addPart(order, name, charts[i], OutputOrder::Chart, heading);
                    document["dataModel"]["fields"].push_back(*charts[i].field);
                    Json chart = *charts[i].value;
                    if (_isTranslated)
                        translateChart(chart, titleOf(*charts[i].field), heading);
                    document[kName][name][charts[i].key] = std::move(chart);
                }
                render(document.dump(), order);
            }
        }
    }

private:
    static constexpr std::string_view kBoxes = "boxes";
    static constexpr std::pair<const char*, const char*> kCharts[] = {{kBoxes.data(), "Box Plots"},
                                                                      {"bars", "Bar Charts"},
                                                                      {"histograms", "Histograms"}};
    static constexpr std::size_t kFieldsOfDocument = 50;

    /// A table or chart of one field.
    struct Part
    {
        std::string key; ///< "f" and the number of the field, from 1
        const Json* field;
        const Json* value;
    };
    using Parts = std::vector<Part>;

    static RenderOrder emptyOrder()
    {
        RenderOrder order;
        order.result = kName;
        return order;
    }
    /// The data model without its fields.
    Json emptyModel() const
    {
        Json document;
        for (const auto& [key, value] : _document.at("dataModel").items())
            document["dataModel"][key] = key == "fields" ? Json::array() : value;
        return document;
    }

    /// The parts of this name, in the order of the fields. One walk: to look each key up would
    /// search the whole object.
    Parts partsOf(const std::string& name) const
    {
        Parts parts;
        const Json& result = _document.at(kName);
        const auto found = result.find(name);
        if (found == result.end())
            return parts;
        const Json& fields = _document.at("dataModel").at("fields");
        for (const auto& [key, value] : found->items())
            parts.push_back({key, &fields.at(std::stoul(key.substr(1)) - 1), &value});
        return parts;
    }

    void addTable(RenderOrder& order, const char* name, const std::string& title) const
    {
        addObject(order, {name, "table"}, OutputOrder::Pivot, title);
    }
    /// Adds an object if the result has it.
    void addObject(RenderOrder& order, const std::vector<std::string>& location,
                   OutputOrder::Type type, const std::string& title) const
    {
        if (find(_document.at(kName), location) == nullptr)
            return;
        OutputOrder& object = order.objects.emplace_back().order;
        object.setType(type).addLocation(location);
        object.setOutlineTitle(title, true).setOMSSubType(title);
    }
    /// Adds a part of a field, under a heading.
    void addPart(RenderOrder& order, const char* name, const Part& part, OutputOrder::Type type,
                 const char* heading) const
    {
        OutputOrder& added = order.objects.emplace_back().order;
        added.setType(type).addLocation({name, part.key});
        added.setHeading(_strings.LookUp(heading))
            .setOutlineTitle(titleOf(*part.field), false)
            .setOMSSubType(heading);
    }
    static std::string titleOf(const Json& field)
    {
        const auto label = field.value("label", std::string());
        return label.empty() ? field.at("id").get<std::string>() : label;
    }

    const bool _isTranslated = isTranslated();
    const std::string& _results;
    Json _document;
    FacSTDictionary _strings;
};

/// Facts about the cases that the statistics do not show, one on each line.
std::vector<std::string> factsOf(const Description& description, const GroupDescription& group)
{
    const FacSTDictionary strings;
    std::vector<std::string> lines;
    const auto tell = [&](const char* key, const std::string& number) {
        lines.push_back(strings.LookUp(key) + ": " + number);
    };
    tell("Cases", group.facts.at("records"));
    if (!description.weight.empty()) {
        lines.push_back(strings.LookUp("Weighted by ") + description.weight);
        // The last digits of a sum of fractions are not known.
        constexpr int kKnownDigits = 12;
        tell("Sum of weights",
             localNumber(std::strtod(group.facts.at("weight").c_str(), nullptr), kKnownDigits));
    }
    if (group.leftOut > 0)
        tell("Cases left out, without a weight", std::to_string(group.leftOut));
    return lines;
}

/// Without the folder: a page may be read on another computer.
std::string titleOf(const Description& description)
{
    return description.file == kStandardStream
               ? FacSTDictionary().LookUp("Descriptive Statistics")
               : std::filesystem::path(description.file).filename().string();
}

/// Removes the headings that have charts.
void removeCharts(OutputHeading& group)
{
    std::erase_if(group.items, [](const OutputItem& item) {
        const auto* heading = std::get_if<std::shared_ptr<OutputHeading>>(&item);
        return heading && !(*heading)->items.empty() &&
               std::holds_alternative<OutputChart>((*heading)->items.front());
    });
}

} // namespace

DescriptionOutput::DescriptionOutput(HostSession& session, const Description& description,
                                     OutputLook look)
    : _session(session), _description(description), _look(std::move(look)),
      _heading(std::make_shared<OutputHeading>())
{
    _heading->text.text = titleOf(description);
}

void DescriptionOutput::add(const GroupDescription& group, const std::string& results,
                            ProcedureDataSource& data)
{
    const InterruptWatch::Abandonable work(_session.watch());
    TnProcedure procedure(nameOf(group.key), &data);
    const OrderMaker maker(results);
    const std::string document = maker.document();
    Rendering(_session, procedure, _description.file, document)
        .render(maker.tables(factsOf(_description, group), drawsAnalyses()));
    ++_groups;
    if (hasGroupCharts())
        maker.makeCharts(drawsAnalyses(), [&](const std::string& chart, const RenderOrder& order) {
            _session.watch().check();
            Rendering(_session, procedure, _description.file, chart).render(order);
        });
    if (group.key.empty())
        _heading->items = procedure.node()->items;
    else
        keep(procedure.node());
    if (!group.key.empty())
        _comparison.add(nameOf(group.key), group,
                        hasGroupCharts() ? maker.histograms(group.fields.size())
                                         : std::vector<std::vector<ComparedBin>>());
}

/// A page needs the trees, because it begins with its contents.
void DescriptionOutput::keep(const std::shared_ptr<OutputHeading>& group)
{
    if (drawsAnalyses()) {
        _heading->items.emplace_back(group);
        return;
    }
    writeFurtherText({group}, _look, _groupTexts);
    OutputTree::instance().clear();
}

void DescriptionOutput::write(std::ostream& out) const
{
    writeOutput(*_heading, _look, out);
    out << _groupTexts.view();
}

bool DescriptionOutput::hasGroupCharts() const
{
    constexpr std::size_t kMostGroups = 20;
    return !drawsAnalyses() || _groups <= kMostGroups;
}

void DescriptionOutput::compareGroups()
{
    if (!_comparison.hasContent())
        return;
    const InterruptWatch::Abandonable work(_session.watch());
    TnProcedure procedure(FacSTDictionary().LookUp("Groups Compared"));
    const std::string document = _comparison.document();
    Rendering(_session, procedure, _description.file, document)
        .render(_comparison.order(drawsAnalyses()));
    for (const OutputItem& item : _heading->items)
        if (const auto* group = std::get_if<std::shared_ptr<OutputHeading>>(&item)) {
            (*group)->isFolded = true;
            if (!hasGroupCharts())
                removeCharts(**group);
        }
    _heading->items.insert(_heading->items.begin(), procedure.node());
}
