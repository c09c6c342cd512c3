#include <algorithm>
#include <compare>
#include <memory>
#include <numeric>

#include <unicode/coll.h>

#include "CFAppHost.h"
#include "OutputTable.h"

namespace {

std::unique_ptr<icu::Collator> collatorOfHost()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale(CFAppHost::getInstance()->getLocale().c_str());
    return std::unique_ptr<icu::Collator>(icu::Collator::createInstance(locale, status));
}

bool isLess(const icu::Collator* collator, const TnContent& left, const TnContent& right)
{
    if (left.number && right.number)
        return std::is_lt(std::strong_order(*left.number, *right.number));
    // Numbers before texts, as in spreadsheets.
    if (left.number || right.number)
        return left.number.has_value();
    if (!collator)
        return left.text < right.text;
    UErrorCode status = U_ZERO_ERROR;
    return collator->compareUTF8(left.text, right.text, status) == UCOL_LESS;
}

/// Visits the tree of a dimension in display order.
class LeafWalk
{
public:
    explicit LeafWalk(const OutputDimension& dimension) : _dimension(dimension) {}

    std::vector<OutputLeaf> leaves(bool withHidden)
    {
        _withHidden = withHidden;
        _leaves.clear();
        if (!_dimension.nodes.empty())
            visitChildren(_dimension.nodes.front());
        return std::move(_leaves);
    }

private:
    const OutputCategory& node(int number) const
    {
        return _dimension.nodes[static_cast<std::size_t>(number)];
    }

    void visitChildren(const OutputCategory& group)
    {
        std::vector<int> children = group.children;
        sort(children, group.sort);
        for (const int child : children) {
            _path.push_back(child);
            if (node(child).isGroup)
                visitChildren(node(child));
            else if (node(child).isShown || _withHidden)
                _leaves.push_back({_path, node(child).leaf});
            _path.pop_back();
        }
    }

    void sort(std::vector<int>& children, int order) const
    {
        if (order != TnGroup::Ascending && order != TnGroup::Descending)
            return;
        const std::unique_ptr<icu::Collator> collator = collatorOfHost();
        std::stable_sort(children.begin(), children.end(), [&](int left, int right) {
            if (order == TnGroup::Descending)
                std::swap(left, right);
            return isLess(collator.get(), node(left).label, node(right).label);
        });
    }

    const OutputDimension& _dimension;
    bool _withHidden = false;
    std::vector<int> _path;
    std::vector<OutputLeaf> _leaves;
};

} // namespace

std::vector<int> dimensionsAt(const OutputTable& table, TnDimension::Place place)
{
    std::vector<int> numbers(table.dimensions.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    const auto dimension = [&](int number) -> const OutputDimension& {
        return table.dimensions[static_cast<std::size_t>(number)];
    };
    std::erase_if(numbers, [&](int number) { return dimension(number).place != place; });
    std::stable_sort(numbers.begin(), numbers.end(), [&](int left, int right) {
        return dimension(left).position < dimension(right).position;
    });
    return numbers;
}

std::vector<OutputLeaf> shownLeaves(const OutputDimension& dimension)
{
    LeafWalk walk(dimension);
    std::vector<OutputLeaf> leaves = walk.leaves(false);
    // A dimension with hidden labels still has cells.
    return leaves.empty() && dimension.hidesChildren ? walk.leaves(true) : leaves;
}
