#include "report/page/PageContents.h"

#include <algorithm>
#include <iterator>

#include "report/charts/NetworkSpec.h"
#include "report/maps/MapSpec.h"
#include "report/page/TableMarkup.h"

namespace {

/// A page with more items is large.
constexpr std::size_t kManyItems = 60;
/// A large page folds headings with more items.
constexpr std::size_t kLongList = 20;

/// A letter for the kind of item, used in anchors.
char kindOf(const OutputItem& item)
{
    constexpr char kinds[] = {'h', 't', 'c', 'v', 'm'};
    static_assert(std::size(kinds) == std::variant_size_v<OutputItem>);
    return kinds[item.index()];
}

/// Whether a script draws a part of the document; maps and networks need none.
bool needsLibrary(const PageJson& part, const OutputDocument& source)
{
    if (isDrawable(part))
        return !readMapSpec(part, source) && !readNetworkSpec(part);
    return part.is_structured() && std::ranges::any_of(part, [&](const PageJson& inner) {
               return needsLibrary(inner, source);
           });
}

} // namespace

PageContents::PageContents(const std::vector<OutputItem>& items)
{
    visit(items);
}

void PageContents::visit(const std::vector<OutputItem>& items)
{
    for (const OutputItem& item : items) {
        _anchors.emplace(&item, kindOf(item) + std::to_string(_anchors.size() + 1));
        if (const auto* heading = std::get_if<std::shared_ptr<OutputHeading>>(&item))
            visit((*heading)->items);
        else
            ++_leaves;
        if (const auto* table = std::get_if<std::shared_ptr<OutputTable>>(&item)) {
            if (!widthClass(**table).empty())
                _widthRules.insert(widthRule(**table));
        } else if (const auto* chart = std::get_if<OutputChart>(&item))
            read(item, *chart, chart->templateJson);
        else if (const auto* view = std::get_if<OutputView>(&item))
            read(item, *view, view->json);
    }
}

void PageContents::read(const OutputItem& item, const OutputDocument& source,
                        const std::string& text)
{
    std::optional<PageJson> json = parseDocument(text);
    if (!json)
        return;
    _hasDrawings |= needsLibrary(*json, source);
    _documents.emplace(&item, std::move(*json));
}

bool PageContents::isLarge() const
{
    return _leaves > kManyItems;
}

bool PageContents::isFolded(const OutputHeading& heading) const
{
    const bool isLong = heading.items.size() > kLongList;
    return !heading.items.empty() && (heading.isFolded || (isLarge() && isLong));
}

const PageJson* PageContents::document(const OutputItem& item) const
{
    const auto found = _documents.find(&item);
    return found == _documents.end() ? nullptr : &found->second;
}

std::string PageContents::widthRules() const
{
    std::string rules;
    for (const std::string& rule : _widthRules)
        rules += rule;
    return rules;
}
