#include "components/descriptives/AnalysisElements.h"

#include "components/descriptives/model/SummaryText.h"

namespace EmbeddedHV {
namespace {

void addPercentiles(pugi::xml_node& node, const FieldSummary& field)
{
    if (field.percentiles.empty())
        return;
    pugi::xml_node list = node.append_child("Percentiles");
    for (const Percentile& percentile : field.percentiles) {
        pugi::xml_node entry = list.append_child("Percentile");
        addAttribute(entry, "percent", percentile.percent);
        addAttribute(entry, "value", percentile.value);
    }
}

void addOutlyingValue(pugi::xml_node& list, const OutlyingValue& value, bool weighted)
{
    pugi::xml_node entry = list.append_child("Value");
    addAttribute(entry, "value", value.value.ToString(-1));
    addAttribute(entry, "count", std::to_string(value.records));
    if (weighted)
        addAttribute(entry, "weight", value.weight);
    if (value.isExtreme)
        addAttribute(entry, "extreme", std::string("true"));
}

void addOutliers(pugi::xml_node& node, const OutlierSummary& outliers, bool weighted)
{
    pugi::xml_node list = node.append_child("Outliers");
    addAttribute(list, "lowerBound", outliers.lower);
    addAttribute(list, "upperBound", outliers.upper);
    addAttribute(list, "lowerExtremeBound", outliers.extremeLower);
    addAttribute(list, "upperExtremeBound", outliers.extremeUpper);
    addAttribute(list, "below", std::to_string(outliers.below.records));
    addAttribute(list, "above", std::to_string(outliers.above.records));
    addAttribute(list, "extremesBelow", std::to_string(outliers.below.extremes));
    addAttribute(list, "extremesAbove", std::to_string(outliers.above.extremes));
    if (weighted) {
        addAttribute(list, "weightBelow", outliers.below.weight);
        addAttribute(list, "weightAbove", outliers.above.weight);
    }
    for (const OutlyingValue& value : outliers.values)
        addOutlyingValue(list, value, weighted);
}

void addBins(pugi::xml_node& node, const FieldSummary& field, bool weighted)
{
    if (field.bins.empty())
        return;
    pugi::xml_node list = node.append_child("Bins");
    for (const Bin& bin : field.bins) {
        pugi::xml_node entry = list.append_child("Bin");
        addAttribute(entry, "from", bin.from);
        addAttribute(entry, "to", bin.to);
        addAttribute(entry, "count", std::to_string(bin.records));
        if (weighted)
            addAttribute(entry, "weight", bin.weight);
    }
}

void addZeroInflation(pugi::xml_node& node, const ZeroInflation& test)
{
    pugi::xml_node element = node.append_child("ZeroInflation");
    addAttribute(element, "zeros", test.zeros);
    addAttribute(element, "expected", test.expected);
    addAttribute(element, "statistic", test.statistic);
    addAttribute(element, "p", test.p);
}

void addDuration(pugi::xml_node& node, const Duration& duration)
{
    pugi::xml_node element = node.append_child("Duration");
    addAttribute(element, "unit", std::string(duration.isInDays ? "day" : "second"));
    addAttribute(element, "longest", duration.longest);
    addAttribute(element, "mean", duration.mean);
    addAttribute(element, "standardDeviation", duration.standardDeviation);
    addAttribute(element, "firstQuartile", duration.firstQuartile);
    addAttribute(element, "median", duration.median);
    addAttribute(element, "thirdQuartile", duration.thirdQuartile);
}

void addMergedValues(pugi::xml_node& node, const FieldSummary& field)
{
    if (field.mergedValues.empty())
        return;
    pugi::xml_node list = node.append_child("MergedValues");
    for (const std::vector<CFDatum>& group : field.mergedValues) {
        pugi::xml_node entry = list.append_child("Group");
        for (const CFDatum& value : group)
            entry.append_child("Value").append_attribute("value").set_value(
                xmlText(value.ToString(-1)).c_str());
    }
}

const char* wordOf(PairMeasure measure)
{
    switch (measure) {
    case PairMeasure::Correlation:
        return "correlation";
    case PairMeasure::Eta:
        return "eta";
    default:
        return "cramersV";
    }
}

} // namespace

void addAnalysesOfField(pugi::xml_node& node, const FieldSummary& field, bool weighted)
{
    addPercentiles(node, field);
    if (field.outliers)
        addOutliers(node, *field.outliers, weighted);
    addBins(node, field, weighted);
    if (field.zeroInflation)
        addZeroInflation(node, *field.zeroInflation);
    if (field.duration)
        addDuration(node, *field.duration);
    addMergedValues(node, field);
}

void addPairs(pugi::xml_node& summaries, const DataSummary& summary)
{
    if (summary.pairs.empty())
        return;
    pugi::xml_node list = summaries.append_child("Pairs");
    for (const PairStatistic& pair : summary.pairs) {
        pugi::xml_node entry = list.append_child("Pair");
        const auto nameOf = [&](std::size_t field) {
            return xmlText(summary.fields[field].field.GetName());
        };
        addAttribute(entry, "first", nameOf(pair.first));
        addAttribute(entry, "second", nameOf(pair.second));
        addAttribute(entry, "measure", std::string(wordOf(pair.measure)));
        addAttribute(entry, "records", std::to_string(pair.records));
        if (summary.weightField)
            addAttribute(entry, "weight", pair.weight);
        addAttribute(entry, "strength", pair.association.strength);
        addAttribute(entry, "statistic", pair.association.statistic);
        addAttribute(entry, "df1", pair.association.firstFreedom);
        addAttribute(entry, "df2", pair.association.secondFreedom);
        addAttribute(entry, "p", pair.association.p);
    }
}

void addMissingPatterns(pugi::xml_node& summaries, const DataSummary& summary)
{
    if (!summary.missingPatterns)
        return;
    pugi::xml_node list = summaries.append_child("MissingPatterns");
    addAttribute(list, "count", std::to_string(summary.missingPatterns->count));
    for (const MissingPattern& pattern : summary.missingPatterns->listed) {
        pugi::xml_node entry = list.append_child("Pattern");
        addAttribute(entry, "records", std::to_string(pattern.records));
        if (summary.weightField)
            addAttribute(entry, "weight", pattern.weight);
        for (const std::size_t field : pattern.fields) {
            pugi::xml_node name = entry.append_child("Field");
            addAttribute(name, "name", xmlText(summary.fields[field].field.GetName()));
        }
    }
}

} // namespace EmbeddedHV
