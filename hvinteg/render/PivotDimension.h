#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "TnCellText.h"
#include "TnPivotTable.h"

/// One step of the declaration of a dimension's categories. A dimension is declared repeatedly, so
/// its tree is converted to a list of steps once.
struct PivotStep
{
    /// A group has two steps, with the steps of its members between them.
    enum Kind
    {
        OpenGroup,
        CloseGroup,
        Leaf
    };
    Kind kind = CloseGroup;
    std::unique_ptr<TnCellText> label;
    std::vector<int> footnotes;
    bool show = true;
    TnGroup::Sort sort = TnGroup::Unsorted;
    std::string subscript;      ///< for a leaf: its part of the cells' keys
    std::uint64_t position = 0; ///< the position in `subscript`; CellKey::kNowhere if invalid
};

/// A dimension that can be declared.
struct PivotDimension
{
    std::unique_ptr<TnCellText> name; ///< null if the dimension cannot be declared
    TnPivotTable::Sort sort = TnPivotTable::Unsorted;
    std::vector<int> footnotes;
    TnDimension::Place place = TnDimension::Row;
    int position = 1;
    bool hidesName = false;
    bool hidesChildren = false;
    std::vector<PivotStep> steps;
};
