#include "page/PageContents.h"

#include <iterator>

#include "page/TableMarkup.h"
#include "page/ViewMarkup.h"

namespace {

/// A letter for the kind, so that an anchor tells what it leads to.
char kindOf(const OutputItem& item)
{
    constexpr char kinds[] = {'h', 't', 'c', 'v', 'm'};
    static_assert(std::size(kinds) == std::variant_size_v<OutputItem>);
    return kinds[item.index()];
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
        else if (const auto* table = std::get_if<std::shared_ptr<OutputTable>>(&item)) {
            if (!widthClass(**table).empty())
                _widthRules.insert(widthRule(**table));
        } else if (const auto* chart = std::get_if<OutputChart>(&item))
            read(item, chart->templateJson);
        else if (const auto* view = std::get_if<OutputView>(&item))
            read(item, view->json);
    }
}

void PageContents::read(const OutputItem& item, const std::string& text)
{
    std::optional<PageJson> json = parseDocument(text);
    if (!json)
        return;
    _hasDrawings |= hasDrawing(*json);
    _documents.emplace(&item, std::move(*json));
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
