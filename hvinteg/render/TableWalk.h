#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TnPivotTable.h"
#include "render/CellPlacer.h"
#include "render/CellStore.h"
#include "render/CellStyles.h"
#include "render/Footnotes.h"
#include "render/PivotDimension.h"

/// Declares the dimensions of a table and places its cells.
///
/// The host addresses a cell by the categories that are open, one of each dimension. So each leaf
/// of a dimension declares the next dimension again, with all its categories, and the leaves of the
/// last one carry the cells. It goes through any number of dimensions without recursion.
class TableWalk
{
public:
    /// How many categories and groups a walk declares, the repeated ones included; the largest
    /// number if it is even more. The cells are among them, since each belongs to a leaf.
    static std::uint64_t length(const std::vector<PivotDimension>& dimensions);

    /// All are borrowed.
    TableWalk(TnPivotTable& table, const std::vector<PivotDimension>& dimensions,
              const CellStore& store, CellStyles& styles, const CellPlacer& placer,
              const Footnotes& footnotes)
        : _table(table), _dimensions(dimensions), _store(store), _styles(styles), _placer(placer),
          _footnotes(footnotes)
    {
    }
    /// Ends early if the user asks the host for a stop.
    void run();

private:
    /// A part of a cell's address, as far as the open leaves state it: its key, and the cell's
    /// number where there is one.
    struct Address
    {
        std::string key;
        std::uint64_t number;
    };
    /// A dimension that is being declared.
    struct Level
    {
        std::unique_ptr<TnDimension> dimension;
        std::vector<std::unique_ptr<TnGroup>> groups;
        Address address; ///< of the leaf under which it is declared
        std::size_t step = 0;

        TnGroup& parent() { return groups.empty() ? *dimension : *groups.back(); }
    };
    void declare(Address address);
    void take(const PivotStep& step);
    void openGroup(const PivotStep& step);
    void openLeaf(const PivotStep& step);
    void placeCell(TnCategory& category, const Address& base, const PivotStep& leaf);
    const Cell* cellAt(const Address& base, const PivotStep& leaf);
    Address addressOf(const Address& base, const PivotStep& leaf) const;
    std::uint64_t numberOf(const Address& base, const PivotStep& leaf) const;

    TnPivotTable& _table;
    const std::vector<PivotDimension>& _dimensions;
    const CellStore& _store;
    CellStyles& _styles;
    const CellPlacer& _placer;
    const Footnotes& _footnotes;
    std::vector<Level> _levels;
    std::string _key; ///< of the cell that is placed
};
