#include "OutputTree.h"

#include <algorithm>
#include <mutex>

#include "output/LiveHeadings.h"

using HeadingItem = std::shared_ptr<OutputHeading>;

struct OutputTree::Impl
{
    mutable std::mutex mutex;
    std::vector<OutputItem> items;
};

OutputTree::OutputTree() : _impl(std::make_unique<Impl>()) {}
OutputTree::~OutputTree() = default;

OutputTree& OutputTree::instance()
{
    static OutputTree tree;
    return tree;
}

const std::vector<OutputItem>& OutputTree::items() const
{
    return _impl->items;
}

std::vector<std::shared_ptr<const OutputHeading>> OutputTree::procedures() const
{
    const std::lock_guard lock(_impl->mutex);
    std::vector<std::shared_ptr<const OutputHeading>> procedures;
    for (const OutputItem& item : _impl->items)
        if (const auto* procedure = std::get_if<HeadingItem>(&item))
            procedures.push_back(*procedure);
    return procedures;
}

void OutputTree::clear()
{
    const std::vector<HeadingItem> alive = liveProcedures();
    const std::lock_guard lock(_impl->mutex);
    _impl->items.clear();
    // Active procedures continue, so they need a place in the tree.
    for (const HeadingItem& procedure : alive) {
        procedure->items.clear();
        _impl->items.emplace_back(procedure);
    }
}

void OutputTree::add(OutputHeading* heading, OutputItem item)
{
    const std::lock_guard lock(_impl->mutex);
    (heading ? heading->items : _impl->items).push_back(std::move(item));
}

std::shared_ptr<OutputHeading> OutputTree::heading(OutputHeading& parent, const TnContent& text)
{
    const std::lock_guard lock(_impl->mutex);
    // A repeated heading, for example for each table of a procedure, continues the existing one.
    if (!parent.items.empty())
        if (const auto* last = std::get_if<HeadingItem>(&parent.items.back()))
            if ((*last)->text.text == text.text)
                return *last;
    auto added = std::make_shared<OutputHeading>();
    added->text = text;
    parent.items.emplace_back(added);
    return added;
}

void OutputTree::removeEmpty(const OutputHeading& procedure)
{
    const std::lock_guard lock(_impl->mutex);
    if (!procedure.items.empty())
        return;
    std::erase_if(_impl->items, [&](const OutputItem& item) {
        const auto* heading = std::get_if<HeadingItem>(&item);
        return heading && heading->get() == &procedure;
    });
}
