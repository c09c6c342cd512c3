#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "TnCellText.h"
#include "TnPivotTable.h"

/// One step of declaring a dimension's categories. A dimension is declared again and again, so the
/// tree is laid out once as the steps that declare it.
struct PivotStep
{
    /// A group is told by two steps, with its members' steps between them.
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
    std::string subscript;      ///< of a leaf: its part of the cells' keys
    std::uint64_t position = 0; ///< what the subscript states; CellKey::kNowhere for no leaf's
};

/// A dimension, ready to be declared.
struct PivotDimension
{
    std::unique_ptr<TnCellText> name; ///< without one there is nothing to declare
    TnPivotTable::Sort sort = TnPivotTable::Unsorted;
    std::vector<int> footnotes;
    TnDimension::Place place = TnDimension::Row;
    int position = 1;
    bool hidesName = false;
    bool hidesChildren = false;
    std::vector<PivotStep> steps;
};
