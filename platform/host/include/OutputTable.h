#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "OutputCells.h"
#include "TnCellText.h"
#include "TnPivotTable.h"

/// A footnote of a table. Footnotes of equal text are one.
struct OutputNote
{
    TnContent text;
    std::string marker; ///< its own; empty for one that is counted
    bool keepsMarker = false;
};

/// One node of a dimension's tree: a group, or a category, which is a leaf. `notes` are places in
/// the table's list, here as everywhere.
struct OutputCategory
{
    TnContent label;
    bool isGroup = false;
    bool isShown = true;          ///< of a group its label, of a category all of it
    int sort = TnGroup::Unsorted; ///< of a group
    std::vector<int> notes;
    std::vector<int> children; ///< of a group: nodes, in the order in which they were declared
    int leaf = -1;             ///< of a category: its number in cell addresses
};

/// A dimension of a table with the tree of its categories, as the output library was told it.
struct OutputDimension
{
    TnContent name;
    int sort = TnPivotTable::Unsorted;
    TnDimension::Place place = TnDimension::Row;
    int position = 1;
    bool hidesName = false;
    bool hidesChildren = false; ///< no label of a category or group is shown
    std::vector<int> notes;
    int leafCount = 0;
    std::vector<OutputCategory> nodes; ///< the first is the dimension itself, as a group
};

/// A pivot table as it was told.
struct OutputTable
{
    TnContent title;
    TnContent subtype;
    bool hidesTitle = false;
    std::vector<int> titleNotes;
    std::optional<TnContent> caption;
    std::vector<int> captionNotes;
    std::optional<TnContent> cornerText;
    std::optional<int> maxDataColumnWidth; ///< in points, as the next one
    std::optional<int> minDataColumnWidth;
    /// Names and values of the split group that the table is of; empty for none.
    std::vector<std::pair<std::string, std::string>> splitGroup;
    std::vector<OutputDimension> dimensions; ///< in the order in which they were declared
    std::vector<OutputNote> notes;           ///< in the order in which they came up
    OutputCells cells;
};

/// A category that is shown: its nodes from the outermost group to the category itself, and its
/// number in cell addresses.
struct OutputLeaf
{
    std::vector<int> path;
    int leaf = 0;
};

/// The dimensions of a place, the outermost first, by their numbers in the table. Equal positions
/// keep the order of declaration.
HOST_API std::vector<int> dimensionsAt(const OutputTable& table, TnDimension::Place place);

/// The categories of a dimension in the order in which they are shown: as declared, or sorted by
/// label, numbers by value before texts by the collation of the host's locale. Hidden categories
/// are left out, unless the dimension hides its labels and would be left without a category: what
/// is hidden then is the label alone.
HOST_API std::vector<OutputLeaf> shownLeaves(const OutputDimension& dimension);

/// The marker of each footnote of a table: its own, or a letter, which counts those that have none.
HOST_API std::vector<std::string> noteMarkers(const OutputTable& table);
