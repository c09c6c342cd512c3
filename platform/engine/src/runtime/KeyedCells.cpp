#include "runtime/KeyedCells.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "datafile/DuckFunctions.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

/// A cell in the bytes of a result. If the sum has parts, `high` is their number, `low` is
/// not-a-number, and the parts follow after all cells.
struct CellBytes
{
    std::int64_t key;
    double high;
    double low;
    std::int64_t count;
};

/// The number of cells, before them.
using CellCount = std::uint64_t;

constexpr std::size_t kFirstCapacity = 8;

/// The address of the border between the threads that share states.
constexpr char kKeyedCellBorder = 0;

template <bool isLeast>
struct Extreme
{
    double value = 0;
    std::int64_t count = 0;

    void add(double added)
    {
        added += 0.0; // of 0 and -0 the one that comes first would be the least
        if (count == 0 || (isLeast ? added < value : added > value))
            value = added;
        ++count;
    }
    void add(const Extreme& other)
    {
        if (other.count == 0)
            return;
        const std::int64_t both = count + other.count;
        add(other.value);
        count = both;
    }
    void write(CellBytes& bytes, std::string&) const
    {
        bytes.high = value;
        bytes.low = 0;
        bytes.count = count;
    }
};

struct Sum : ExactSum
{
    void write(CellBytes& bytes, std::string& tail) const
    {
        bytes.high = high();
        bytes.low = low();
        bytes.count = count();
        if (!parts())
            return;
        bytes.high = static_cast<double>(parts()->size());
        bytes.low = std::nan("");
        tail.append(reinterpret_cast<const char*>(parts()->data()),
                    parts()->size() * sizeof(long double));
    }
};

/// The room for cells in all groups of a database.
struct CellBudget
{
    explicit CellBudget(std::size_t mostCells) : most(mostCells) {}

    const std::size_t most;
    std::atomic<std::size_t> used = 0;
};

struct TooManyCells
{
};

/// The cells of a group. A key that comes again after another one gets another cell; those of one
/// key become one when the room is used up, and at the end.
template <class Value>
class CellList
{
public:
    explicit CellList(CellBudget& budget) : _budget(budget) {}
    CellList(const CellList&) = delete;
    CellList& operator=(const CellList&) = delete;
    ~CellList() { _budget.used -= _cells.capacity(); }

    /// An empty cell of the key. Valid until the next call.
    Value& open(std::int64_t key)
    {
        if (_cells.size() == _cells.capacity())
            makeRoom();
        return _cells.emplace_back(Cell{key, Value()}).value;
    }

    void add(CellList& other)
    {
        unite();
        other.unite();
        for (const Cell& cell : other._cells)
            open(cell.key).add(cell.value);
    }

    void write(std::string& bytes)
    {
        unite();
        const CellCount count = _cells.size();
        bytes.resize(sizeof count + _cells.size() * sizeof(CellBytes));
        std::string tail;
        std::memcpy(bytes.data(), &count, sizeof count);
        char* place = bytes.data() + sizeof count;
        for (const Cell& cell : _cells) {
            CellBytes written{cell.key, 0, 0, 0};
            cell.value.write(written, tail);
            std::memcpy(place, &written, sizeof written);
            place += sizeof written;
        }
        bytes += tail;
    }

private:
    struct Cell
    {
        std::int64_t key;
        Value value;
    };

    void makeRoom()
    {
        unite();
        if (_cells.size() * 2 < _cells.capacity())
            return;
        const std::size_t before = _cells.capacity();
        const std::size_t wanted = std::max(kFirstCapacity, 2 * before);
        if (_budget.used + wanted - before > _budget.most)
            throw TooManyCells{};
        _cells.reserve(wanted);
        _budget.used += _cells.capacity() - before;
    }

    /// Sorts the cells and makes one of those with the same key. Records often come in the order of
    /// time, so that the cells are sorted, or are two sorted lists of two threads.
    void unite()
    {
        const auto isBefore = [](const Cell& left, const Cell& right) {
            return left.key < right.key;
        };
        const auto isNotBefore = [&](const Cell& left, const Cell& right) {
            return !isBefore(left, right);
        };
        const auto found = std::adjacent_find(_cells.begin(), _cells.end(), isNotBefore);
        if (found == _cells.end())
            return;
        if (std::is_sorted(found + 1, _cells.end(), isBefore))
            std::inplace_merge(_cells.begin(), found + 1, _cells.end(), isBefore);
        else
            std::sort(_cells.begin(), _cells.end(), isBefore);
        auto last = _cells.begin();
        for (auto cell = last + 1; cell != _cells.end(); ++cell)
            if (cell->key == last->key)
                last->value.add(cell->value);
            else if (++last != cell)
                *last = std::move(*cell);
        _cells.erase(last + 1, _cells.end());
    }

    CellBudget& _budget;
    std::vector<Cell> _cells;
};

/// The state of a group. The database moves it as bytes.
template <class Value>
struct CellState
{
    CellList<Value>* cells; ///< owned
    Value* last;            ///< the cell of lastKey; null if there is none
    std::int64_t lastKey;

    Value& at(std::int64_t key, CellBudget& budget)
    {
        if (last && lastKey == key)
            return *last;
        last = nullptr;
        if (!cells)
            cells = std::make_unique<CellList<Value>>(budget).release();
        last = &cells->open(key);
        lastKey = key;
        return *last;
    }
};

template <class Value>
CellState<Value>& stateIn(duckdb_aggregate_state state)
{
    return *std::launder(reinterpret_cast<CellState<Value>*>(state));
}

/// Turns exceptions into an error of the statement.
template <class Work>
void guarded(duckdb_function_info info, const Work& work)
{
    const border::Call call(&kKeyedCellBorder);
    try {
        work(*static_cast<CellBudget*>(duckdb_aggregate_function_get_extra_info(info)));
    } catch (const TooManyCells&) {
        duckdb_aggregate_function_set_error(info, kTooManyCells);
    } catch (const std::bad_alloc&) {
        duckdb_aggregate_function_set_error(info, "out of memory");
    }
}

template <class Value, class Key>
void addCells(duckdb_function_info info, duckdb_data_chunk input, duckdb_aggregate_state* states)
{
    const idx_t rows = duckdb_data_chunk_get_size(input);
    const duckdb_vector times = duckdb_data_chunk_get_vector(input, 0);
    const duckdb_vector reals = duckdb_data_chunk_get_vector(input, 1);
    const auto* const keys = static_cast<const Key*>(duckdb_vector_get_data(times));
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(reals));
    std::uint64_t* const hasKey = duckdb_vector_get_validity(times);
    std::uint64_t* const hasValue = duckdb_vector_get_validity(reals);
    guarded(info, [&](CellBudget& budget) {
        for (idx_t row = 0; row < rows; ++row) {
            const bool isThere = !hasKey || duckdb_validity_row_is_valid(hasKey, row);
            Value& cell = stateIn<Value>(states[row])
                              .at(isThere ? std::int64_t{keys[row]} : kMissingKey, budget);
            if ((!hasValue || duckdb_validity_row_is_valid(hasValue, row)) &&
                std::isfinite(values[row]))
                cell.add(values[row]);
        }
    });
}

template <class Value>
idx_t sizeOfCells(duckdb_function_info)
{
    return sizeof(CellState<Value>);
}

template <class Value>
void startCells(duckdb_function_info, duckdb_aggregate_state state)
{
    new (state) CellState<Value>{nullptr, nullptr, 0};
}

template <class Value>
void destroyCells(duckdb_aggregate_state* states, idx_t count)
{
    const border::Call call(&kKeyedCellBorder);
    for (idx_t i = 0; i < count; ++i) {
        CellState<Value>& state = stateIn<Value>(states[i]);
        const std::unique_ptr<CellList<Value>> ending(std::exchange(state.cells, nullptr));
    }
}

/// Takes the cells out of the sources, so the functions cannot be used over a window.
template <class Value>
void combineCells(duckdb_function_info info, duckdb_aggregate_state* sources,
                  duckdb_aggregate_state* targets, idx_t count)
{
    guarded(info, [&](CellBudget&) {
        for (idx_t i = 0; i < count; ++i) {
            CellState<Value>& source = stateIn<Value>(sources[i]);
            CellState<Value>& target = stateIn<Value>(targets[i]);
            source.last = nullptr;
            target.last = nullptr;
            if (!target.cells)
                std::swap(target.cells, source.cells);
            else if (source.cells)
                target.cells->add(*source.cells);
        }
    });
}

template <class Value>
void finishCells(duckdb_function_info info, duckdb_aggregate_state* states, duckdb_vector result,
                 idx_t count, idx_t offset)
{
    guarded(info, [&](CellBudget& budget) {
        std::string bytes;
        for (idx_t i = 0; i < count; ++i) {
            CellState<Value>& state = stateIn<Value>(states[i]);
            state.last = nullptr;
            if (!state.cells)
                state.cells = std::make_unique<CellList<Value>>(budget).release();
            state.cells->write(bytes);
            duckdb_vector_assign_string_element_len(result, offset + i, bytes.data(), bytes.size());
        }
    });
}

using OwnedFunction = std::unique_ptr<std::remove_pointer_t<duckdb_aggregate_function>,
                                      void (*)(duckdb_aggregate_function)>;

template <class Value, class Key>
void addToSet(duckdb_aggregate_function_set set, const char* name, duckdb_type keyType,
              std::size_t mostCells)
{
    const OwnedFunction function(duckdb_create_aggregate_function(),
                                 [](auto made) { duckdb_destroy_aggregate_function(&made); });
    const duck::LogicalType key(keyType);
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    const duck::LogicalType bytes(DUCKDB_TYPE_BLOB);
    duckdb_aggregate_function_set_name(function.get(), name);
    duckdb_aggregate_function_add_parameter(function.get(), key.get());
    duckdb_aggregate_function_add_parameter(function.get(), real.get());
    duckdb_aggregate_function_set_return_type(function.get(), bytes.get());
    duckdb_aggregate_function_set_special_handling(function.get());
    duckdb_aggregate_function_set_functions(function.get(), sizeOfCells<Value>, startCells<Value>,
                                            addCells<Value, Key>, combineCells<Value>,
                                            finishCells<Value>);
    duckdb_aggregate_function_set_destructor(function.get(), destroyCells<Value>);
    duckdb_aggregate_function_set_extra_info(
        function.get(), std::make_unique<CellBudget>(mostCells).release(), [](void* info) {
            const std::unique_ptr<CellBudget> ending(static_cast<CellBudget*>(info));
        });
    duckdb_add_aggregate_function_to_set(set, function.get());
}

template <class Value>
void registerFunction(duck::Connection& connection, const char* name, std::size_t mostCells)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_aggregate_function_set>,
                          void (*)(duckdb_aggregate_function_set)>
        set(duckdb_create_aggregate_function_set(name),
            [](auto made) { duckdb_destroy_aggregate_function_set(&made); });
    addToSet<Value, std::int32_t>(set.get(), name, DUCKDB_TYPE_DATE, mostCells);
    addToSet<Value, std::int64_t>(set.get(), name, DUCKDB_TYPE_TIME, mostCells);
    addToSet<Value, std::int64_t>(set.get(), name, DUCKDB_TYPE_TIMESTAMP, mostCells);
    if (duckdb_register_aggregate_function_set(connection.handle(), set.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not take the function " + std::string(name));
}

} // namespace

KeyedCellReader::KeyedCellReader(std::string_view bytes)
{
    CellCount count = 0;
    std::memcpy(&count, bytes.data(), sizeof count);
    bytes.remove_prefix(sizeof count);
    _bytes = bytes.substr(0, count * sizeof(CellBytes));
    _tail = bytes.substr(_bytes.size());
}

bool KeyedCellReader::next()
{
    if (_bytes.empty())
        return false;
    CellBytes cell;
    std::memcpy(&cell, _bytes.data(), sizeof cell);
    _bytes.remove_prefix(sizeof cell);
    _key = cell.key;
    _high = cell.high;
    _low = cell.low;
    _count = cell.count;
    _parts = {};
    if (std::isnan(cell.low)) {
        _parts = _tail.substr(0, static_cast<std::size_t>(cell.high) * sizeof(long double));
        _tail.remove_prefix(_parts.size());
    }
    return true;
}

ExactSum KeyedCellReader::sum() const
{
    if (_parts.empty())
        return {_high, _low, _count};
    ExactSum::Parts parts(_parts.size() / sizeof(long double));
    std::memcpy(parts.data(), _parts.data(), _parts.size());
    return {0, 0, _count, std::move(parts)};
}

void registerKeyedCells(duck::Connection& connection, std::size_t mostCells)
{
    registerFunction<Sum>(connection, kKeyedSum, mostCells);
    registerFunction<Extreme<true>>(connection, kKeyedMinimum, mostCells);
    registerFunction<Extreme<false>>(connection, kKeyedMaximum, mostCells);
}

} // namespace EmbeddedHV
