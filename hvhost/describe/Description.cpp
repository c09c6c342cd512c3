#include "hvhost/describe/Description.h"

#include <cstdlib>
#include <stdexcept>

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
    pugi::xml_document document;
    document.load_buffer(statXml.data(), statXml.size());
    const pugi::xml_node summaries =
        document.child("StatXML").child("DataModel").child("DatasetSummaries");
    GroupDescription description;
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
    if (!intervals.empty())
        description.intervals = nlohmann::ordered_json::parse(intervals).at("timeIntervals");
    return description;
}
