#include "hvhost/describe/DescriptionOutput.h"

#include <filesystem>

#include <nlohmann/json.hpp>

#include "FacSTDictionary.h"
#include "TnOutput.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/describe/Description.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/Rendering.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kName = "descriptives";

/// Makes the order for a group's result document, in the host's language.
class OrderMaker
{
public:
    explicit OrderMaker(const std::string& results) : _document(Json::parse(results))
    {
        _order.result = kName;
    }

    RenderOrder make(const std::vector<std::string>& facts)
    {
        if (OutputOrder* const statistics = add({"statistics", "table"}, OutputOrder::Pivot))
            title(*statistics, "Descriptive Statistics");
        for (const std::string& fact : facts)
            if (!_order.objects.empty())
                _order.objects.front().order.addTextToCaption(fact);
        if (OutputOrder* const intervals = add({"intervals", "table"}, OutputOrder::Pivot))
            title(*intervals, "Time Intervals");
        addFields("frequencies", OutputOrder::Pivot, "Frequencies");
        addFields("bars", OutputOrder::Chart, "Bar Charts");
        addFields("histograms", OutputOrder::Chart, "Histograms");
        return std::move(_order);
    }

private:
    /// Null if the location is empty.
    OutputOrder* add(const std::vector<std::string>& location, OutputOrder::Type type)
    {
        if (find(_document.at(kName), location) == nullptr)
            return nullptr;
        OutputOrder& order = _order.objects.emplace_back().order;
        return &order.setType(type).addLocation(location);
    }
    static void title(OutputOrder& order, const std::string& key)
    {
        order.setOutlineTitle(key, true).setOMSSubType(key);
    }
    /// Adds one part of each field that has it, under a heading.
    void addFields(const char* part, OutputOrder::Type type, const char* heading)
    {
        std::size_t number = 0;
        for (const Json& field : _document.at("dataModel").at("fields"))
            if (OutputOrder* const order = add({part, "f" + std::to_string(++number)}, type))
                order->setHeading(_strings.LookUp(heading))
                    .setOutlineTitle(titleOf(field), false)
                    .setOMSSubType(heading);
    }
    static std::string titleOf(const Json& field)
    {
        const auto label = field.value("label", std::string());
        return label.empty() ? field.at("id").get<std::string>() : label;
    }

    Json _document;
    RenderOrder _order;
    FacSTDictionary _strings;
};

/// For example "sex = 1 (male)".
std::string keyText(const GroupKey& key)
{
    const std::string value = key.value.value_or(".");
    return key.variable + " = " + (value.empty() ? "\"\"" : value) +
           (key.label.empty() ? "" : " (" + key.label + ")");
}

std::string nameOf(const GroupDescription& group)
{
    std::string name;
    for (const GroupKey& key : group.key)
        name += (name.empty() ? "" : ", ") + keyText(key);
    return name;
}

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
        tell("Sum of weights", group.facts.at("weight"));
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

} // namespace

DescriptionOutput::DescriptionOutput(HostSession& session, const Description& description)
    : _session(session), _description(description), _heading(std::make_shared<OutputHeading>())
{
    _heading->text.text = titleOf(description);
}

void DescriptionOutput::add(const GroupDescription& group, const std::string& results,
                            ProcedureDataSource& data)
{
    const InterruptWatch::Abandonable work(_session.watch());
    TnProcedure procedure(nameOf(group), &data);
    Rendering(_session, procedure, _description.file, results)
        .render(OrderMaker(results).make(factsOf(_description, group)));
    if (group.key.empty())
        _heading->items = procedure.node()->items;
    else
        _heading->items.emplace_back(procedure.node());
}
