#include "expression/MapValues.h"

#include <algorithm>
#include <utility>

namespace scoring {

MapValues::MapValues(ValueKind kind, Expressions sources, std::vector<Row> rows,
                     Treatment treatment)
    : Expression(kind), _sources(std::move(sources)), _rows(std::move(rows)),
      _treatment(std::move(treatment)), _sought(_sources.size())
{
    Cells none;
    for (std::size_t row = 0; row < _rows.size(); ++row) {
        Entry entry{{}, row};
        for (const ExpressionPtr& key : _rows[row].keys)
            entry.keys.push_back(key->evaluate(none));
        _index.push_back(std::move(entry));
    }
    // Stable, so that of rows with equal keys the first one is found.
    std::stable_sort(_index.begin(), _index.end(), [this](const Entry& one, const Entry& other) {
        return order(one.keys, other.keys) < 0;
    });
}

/// Compares key by key.
int MapValues::order(const std::vector<Cell>& first, const std::vector<Cell>& second) const
{
    int result = 0;
    for (std::size_t i = 0; i < _sources.size() && result == 0; ++i)
        result = compare(first[i], second[i], _sources[i]->kind() == ValueKind::Text);
    return result;
}

/// A missing key matches no row, not even one with an empty text.
Cell MapValues::evaluate(Cells& cells)
{
    bool isMissing = false;
    for (std::size_t i = 0; i < _sources.size(); ++i) {
        _sought[i] = _sources[i]->evaluate(cells);
        if (_sought[i].isInvalid())
            return _sought[i];
        isMissing = isMissing || _sought[i].isMissing();
    }
    if (isMissing)
        return _treatment.mapMissingTo ? _treatment.mapMissingTo->evaluate(cells) : Cell::missing();
    const auto found = std::lower_bound(_index.begin(), _index.end(), _sought,
                                        [this](const Entry& entry, const std::vector<Cell>& keys) {
                                            return order(entry.keys, keys) < 0;
                                        });
    if (found == _index.end() || order(found->keys, _sought) != 0)
        return _treatment.apply(Cell::missing(), cells);
    return _rows[found->row].value->evaluate(cells);
}

} // namespace scoring
