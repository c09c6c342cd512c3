#include "hvhost/describe/Description.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include <pugixml.hpp>

#include "base/NumberText.h"
#include "hvhost/base/ValueText.h"

namespace {

Facts attributesOf(const pugi::xml_node& node)
{
    Facts facts;
    for (const pugi::xml_attribute& attribute : node.attributes())
        facts[attribute.name()] = attribute.value();
    return facts;
}

FieldDescription readField(const CFField& field, const pugi::xml_node& node)
{
    FieldDescription description{field, attributesOf(node), {}, {}, {}, {}, {}};
    description.facts.merge(attributesOf(node.child("Statistics")));
    if (field.GetStorage() == CFField::Real)
        for (const char* end : {"minimum", "maximum"})
            if (const auto fact = factOf(description.facts, end))
                // The database writes whole reals with a fraction.
                description.facts[end] = base::shortestNumber(std::strtod(fact->c_str(), nullptr));
    for (const pugi::xml_node& value : node.child("Distribution").children("Value"))
        description.counts.push_back(attributesOf(value));
    for (const pugi::xml_node& value : node.child("Missing").children("Value"))
        description.missingCounts.push_back(attributesOf(value));
    for (const pugi::xml_node& percentile : node.child("Percentiles").children("Percentile"))
        description.percentiles.push_back(attributesOf(percentile));
    description.outliers = attributesOf(node.child("Outliers"));
    for (const pugi::xml_node& value : node.child("Outliers").children("Value"))
        description.outlyingValues.push_back(attributesOf(value));
    return description;
}

/// `text` is an element that contains a data model with summaries.
GroupDescription readGroup(const CFMetaData& model, const std::string& text)
{
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    const pugi::xml_node group = document.first_child();
    const pugi::xml_node summaries = group.child("DataModel").child("DatasetSummaries");
    GroupDescription description;
    description.withoutFiniteWeight = group.attribute("leftOut").as_int();
    description.facts = attributesOf(summaries.child("Dataset"));
    // The summaries have the order of the fields.
    for (const pugi::xml_node& node : summaries.children("FieldSummary")) {
        const CFField* field = model.GetField(description.fields.size());
        if (!field)
            throw std::runtime_error("the statistics do not fit the data model");
        description.fields.push_back(readField(*field, node));
    }
    for (const pugi::xml_node& pair : summaries.child("Pairs").children("Pair"))
        description.pairs.push_back(attributesOf(pair));
    for (const pugi::xml_node& pattern : summaries.child("MissingPatterns").children("Pattern")) {
        auto& described = description.missingPatterns.emplace_back();
        described.facts = attributesOf(pattern);
        for (const pugi::xml_node& field : pattern.children("Field"))
            described.variables.emplace_back(field.attribute("name").value());
    }
    return description;
}

/// The data model in an element, without the summaries.
CFMetaData modelIn(const std::string& text)
{
    const std::size_t begin = text.find("<DataModel>");
    const std::size_t end = text.find("<DatasetSummaries>", begin);
    if (end == std::string::npos)
        throw std::runtime_error("the statistics of a group have no data model");
    return CFMetaData(text.substr(begin, end - begin) + "</DataModel>");
}

} // namespace

std::optional<std::string> factOf(const Facts& facts, const std::string& name)
{
    const auto found = facts.find(name);
    return found == facts.end() ? std::nullopt : std::optional(found->second);
}

bool FieldDescription::isCategorical() const
{
    return field.GetType() != CFField::Continuous && field.GetType() != CFField::Typeless;
}

GroupDescription readDescription(const CFMetaData& model, const std::string& statXml,
                                 const std::string& intervals)
{
    GroupDescription description = readGroup(model, statXml);
    if (!intervals.empty())
        description.intervals = nlohmann::ordered_json::parse(intervals).at("timeIntervals");
    return description;
}

std::vector<GroupDescription> readDescriptions(const std::string& statXml,
                                               const std::string& intervals)
{
    std::vector<GroupDescription> descriptions;
    constexpr std::string_view kEnd = "</Group>";
    std::size_t begin = 0;
    while ((begin = statXml.find("<Group ", begin)) != std::string::npos) {
        const std::size_t end = std::min(statXml.find(kEnd, begin), statXml.size() - kEnd.size());
        const std::string group = statXml.substr(begin, end + kEnd.size() - begin);
        descriptions.push_back(readGroup(modelIn(group), group));
        begin = end;
    }
    if (intervals.empty())
        return descriptions;
    auto groups = nlohmann::ordered_json::parse(intervals).at("groups");
    for (std::size_t i = 0; i < descriptions.size(); ++i)
        descriptions[i].intervals = std::move(groups.at(i).at("timeIntervals"));
    return descriptions;
}
