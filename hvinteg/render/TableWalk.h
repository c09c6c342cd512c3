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
/// The host addresses a cell by the open categories, one of each dimension. Each leaf of a
/// dimension therefore declares the next dimension again, with all its categories; the leaves of
/// the last dimension carry the cells. The walk is iterative, for any number of dimensions.
class TableWalk
{
public:
    /// The number of categories and groups that a walk declares, including repetitions. Limited to
    /// the largest number. Cells are included, because each belongs to a leaf.
    static std::uint64_t length(const std::vector<PivotDimension>& dimensions);

    /// All are borrowed.
    TableWalk(TnPivotTable& table, const std::vector<PivotDimension>& dimensions,
              const CellStore& store, CellStyles& styles, const CellPlacer& placer,
              const Footnotes& footnotes)
        : _table(table), _dimensions(dimensions), _store(store), _styles(styles), _placer(placer),
          _footnotes(footnotes)
    {
    }
    /// Ends early if the user requests a stop.
    void run();

private:
    /// The part of a cell's address that the open leaves define: its key and, if cells are
    /// numbered, its number.
    struct Address
    {
        std::string key;
        std::uint64_t number;
    };
    /// A dimension whose declaration is in progress.
    struct Level
    {
        std::unique_ptr<TnDimension> dimension;
        std::vector<std::unique_ptr<TnGroup>> groups;
        Address address; ///< of the parent leaf
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
    std::string _key; ///< of the current cell
};
