#include "hvhost/describe/GroupComparison.h"

#include <algorithm>
#include <utility>

#include "hvhost/base/ValueText.h"
#include "hvhost/describe/GroupCharts.h"
#include "hvhost/show/ResultWords.h"

namespace {

constexpr const char* kResult = "comparison";
constexpr const char* kNumbers = "numbers";
constexpr std::size_t kMostBars = 40;
constexpr std::size_t kMostHistograms = 20;

std::string partOf(const char* kind, std::size_t field)
{
    return kind + std::to_string(field + 1);
}

void addObject(RenderOrder& order, const std::string& part, OutputOrder::Type type,
               const std::string& title)
{
    order.objects.emplace_back()
        .order.setType(type)
        .setOutlineTitle(title, false)
        .addLocation(part);
}

} // namespace

void GroupComparison::add(const std::string& name, const GroupDescription& group,
                          std::vector<std::vector<ComparedBin>> histograms)
{
    _names.push_back(name);
    _groups.push_back(group.fields);
    _histograms.push_back(std::move(histograms));
}

bool GroupComparison::hasHistograms(std::size_t field) const
{
    return _groups.size() <= kMostHistograms &&
           std::ranges::any_of(_histograms, [field](const auto& fields) {
               return field < fields.size() && !fields[field].empty();
           });
}

bool GroupComparison::hasContent() const
{
    return _groups.size() > 1 && !order(true).objects.empty();
}

std::string GroupComparison::document() const
{
    nlohmann::ordered_json parts;
    const GroupsCompared groups{_names, _groups, _histograms};
    if (const std::vector<std::size_t> fields = numberFields(groups); !fields.empty())
        parts[kNumbers] = numbersTable(groups, fields);
    for (const std::size_t field : numberFields(groups)) {
        parts[partOf("box", field)] = boxChart(groups, field);
        if (hasHistograms(field))
            parts[partOf("histograms", field)] = histogramsChart(groups, field);
    }
    for (const ComparedTexts& texts : comparedTexts(groups)) {
        parts[partOf("shares", texts.field)] = sharesTable(groups, texts);
        parts[partOf("bars", texts.field)] = sharesChart(groups, texts);
    }
    return nlohmann::ordered_json{{kResult, std::move(parts)}}.dump(
        -1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

RenderOrder GroupComparison::order(bool withCharts) const
{
    RenderOrder order;
    order.result = kResult;
    const GroupsCompared groups{_names, _groups, _histograms};
    const std::vector<std::size_t> numbers = numberFields(groups);
    if (!numbers.empty())
        addObject(order, kNumbers, OutputOrder::Pivot, word("Numbers"));
    if (withCharts)
        for (const std::size_t field : numbers) {
            const std::string title = groups.titleOf(field);
            addObject(order, partOf("box", field), OutputOrder::Chart,
                      sentence("^1: box plots", {title}));
            if (hasHistograms(field))
                addObject(order, partOf("histograms", field), OutputOrder::Chart,
                          sentence("^1: histograms", {title}));
        }
    for (const ComparedTexts& texts : comparedTexts(groups)) {
        const std::string title = groups.titleOf(texts.field);
        addObject(order, partOf("shares", texts.field), OutputOrder::Pivot,
                  sentence("^1: percentages", {title}));
        // Bars of more groups only repeat the table.
        if (withCharts && groups.size() <= kMostBars)
            addObject(order, partOf("bars", texts.field), OutputOrder::Chart,
                      sentence("^1: bars", {title}));
    }
    return order;
}
