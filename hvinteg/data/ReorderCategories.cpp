#include "data/ReorderCategories.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

using Values = std::vector<CFValue>;

/// A sequence of indices into a list.
using Order = std::vector<std::size_t>;

bool isReference(const CFValue* reference)
{
    return reference && !reference->GetDatum().IsNull();
}

// Index of the reference in a list; -1 if it is missing or there is no reference.
int placeOf(const CFValue* reference, const Values& values)
{
    return isReference(reference) ? CFValue::GetIndex(reference->GetDatum(), values) : -1;
}

// Ascending, with the entry at index `last` at the end.
Order reordered(const Values& values, int last)
{
    Order order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto isLast = [last](std::size_t place) { return static_cast<int>(place) == last; };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        if (isLast(left) || isLast(right))
            return !isLast(left) && isLast(right);
        return values[left].GetDatum().Compare(values[right].GetDatum()) < 0;
    });
    return order;
}

Values inOrder(const Values& values, const Order& order)
{
    Values moved;
    moved.reserve(values.size());
    for (const std::size_t place : order)
        moved.push_back(values[place]);
    return moved;
}

Values reorderAlone(const Values& values, const CFValue* reference)
{
    return inOrder(values, reordered(values, placeOf(reference, values)));
}

// Sorts values and value labels of the field. Returns true if the reference is not among them.
bool reorderLists(CFField& field, const CFValue* reference)
{
    const Values& values = field.GetValues();
    const Values& labels = field.GetValueLabels();
    const Values& keys = values.empty() ? labels : values;
    const int last = placeOf(reference, keys);
    const Order order = reordered(keys, last);
    const bool isMissed = isReference(reference) && last < 0 && !keys.empty();
    // Lists of different length are not pairs: sort each by its own values.
    Values newLabels =
        labels.size() == keys.size() ? inOrder(labels, order) : reorderAlone(labels, reference);
    if (!values.empty())
        field.SetValues(inOrder(values, order));
    field.SetValueLabels(std::move(newLabels));
    return isMissed;
}

// Undeclared missing values stay undeclared.
CFMissingValues reorderMissing(const CFMissingValues& missing, const CFValue* reference)
{
    return missing.IsValid()
               ? CFMissingValues(missing.GetRange(), reorderAlone(missing.GetValues(), reference),
                                 missing.IsNullMissing(), missing.IsWhiteSpMissing())
               : missing;
}

const CFValue* referenceAt(const Values* references, std::size_t position)
{
    return references && position < references->size() ? &(*references)[position] : nullptr;
}

void reorderField(CFMetaData& metadata, std::size_t index, const CFValue* reference,
                  std::vector<int>* notFound)
{
    bool isMissed = false;
    CFField field = *metadata.GetField(index);
    ReorderCategories(field, field, reference, &isMissed);
    metadata.ReplaceField(index, field);
    if (isMissed && notFound)
        notFound->push_back(static_cast<int>(index));
}

} // namespace

void ReorderCategories(CFField& out, const CFField& in, const CFValue* reference, bool* notFound)
{
    CFField field = in;
    bool isMissed = false;
    // The values of a continuous field are not categories.
    if (field.GetType() != CFField::Continuous) {
        isMissed = reorderLists(field, reference);
        field.SetMissingValues(reorderMissing(field.GetMissingValues(), reference));
    }
    if (notFound)
        *notFound = isMissed;
    // Last: `in` and `out` may be the same field.
    out = std::move(field);
}

void ReorderCategories(CFMetaData& metadata, const std::vector<int>& fields,
                       const std::vector<CFValue>* references, std::vector<int>* notFound)
{
    if (fields.empty()) {
        ReorderCategories(metadata, nullptr, notFound);
        return;
    }
    if (notFound)
        notFound->clear();
    for (std::size_t index = 0; index < metadata.FieldCount(); ++index) {
        const auto found = std::find(fields.begin(), fields.end(), static_cast<int>(index));
        if (found != fields.end())
            reorderField(metadata, index,
                         referenceAt(references, static_cast<std::size_t>(found - fields.begin())),
                         notFound);
    }
}

void ReorderCategories(CFMetaData& metadata, const std::vector<CFValue>* references,
                       std::vector<int>* notFound)
{
    if (notFound)
        notFound->clear();
    for (std::size_t index = 0; index < metadata.FieldCount(); ++index)
        reorderField(metadata, index, referenceAt(references, index), notFound);
}
