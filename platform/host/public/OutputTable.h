#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "OutputCells.h"
#include "TnCellText.h"
#include "TnPivotTable.h"

/// A footnote of a table. Footnotes with equal text are merged.
struct OutputNote
{
    TnContent text;           ///< of the footnote
    std::string marker;       ///< an explicit marker; empty for a counted one
    bool keepsMarker = false; ///< whether the marker is never replaced by a counted one
};

/// A node of a dimension's tree: a group, or a category, which is a leaf. `notes` are indexes in
/// the table's list of notes, as everywhere in this file.
struct OutputCategory
{
    TnContent label;              ///< as declared
    bool isGroup = false;         ///< a group, not a category
    bool isShown = true;          ///< for a group: its label; for a category: all of it
    int sort = TnGroup::Unsorted; ///< of a group
    std::vector<int> notes;       ///< of the label
    std::vector<int> children;    ///< of a group: nodes in the order of their declaration
    int leaf = -1;                ///< of a category: its number in cell addresses
};

/// A dimension of a table with the tree of its categories, as declared.
struct OutputDimension
{
    TnContent name;                              ///< as declared
    int sort = TnPivotTable::Unsorted;           ///< of the categories
    TnDimension::Place place = TnDimension::Row; ///< rows, columns or layers
    int position = 1;                  ///< among the dimensions of its place; 1 is the outermost
    bool hidesName = false;            ///< whether the name is hidden
    bool hidesChildren = false;        ///< whether all labels of categories and groups are hidden
    std::vector<int> notes;            ///< of the name
    int leafCount = 0;                 ///< number of categories
    std::vector<OutputCategory> nodes; ///< the first is the dimension itself, as a group
};

/// A pivot table as declared.
struct OutputTable
{
    TnContent title;                       ///< as declared
    TnContent subtype;                     ///< identifies the kind of table
    bool hidesTitle = false;               ///< whether the title is hidden
    std::vector<int> titleNotes;           ///< of the title
    std::optional<TnContent> caption;      ///< below the table
    std::vector<int> captionNotes;         ///< of the caption
    std::optional<TnContent> cornerText;   ///< above the row labels
    std::optional<int> maxDataColumnWidth; ///< in points, as is the next
    std::optional<int> minDataColumnWidth; ///< in points
    /// Names and values of the split group that the table belongs to; empty for none.
    std::vector<std::pair<std::string, std::string>> splitGroup;
    std::vector<OutputDimension> dimensions; ///< in the order of their declaration
    std::vector<OutputNote> notes;           ///< in the order of their first use
    OutputCells cells;                       ///< of all shown and hidden categories
};

/// A category that is shown: its nodes from the outermost group to the category, and its number in
/// cell addresses.
struct OutputLeaf
{
    std::vector<int> path; ///< indexes of nodes
    int leaf = 0;          ///< number of the category in cell addresses
};

/// The indexes of the dimensions in a place, the outermost first. Dimensions of equal position keep
/// the order of their declaration.
HOST_API std::vector<int> dimensionsAt(const OutputTable& table, TnDimension::Place place);

/// The shown categories of a dimension in display order: as declared, or sorted by label, numbers
/// by value before texts by the collation of the host's locale. Hidden categories are left out. If
/// the dimension hides its labels and all categories are hidden, they are included, because then
/// only their labels are hidden.
HOST_API std::vector<OutputLeaf> shownLeaves(const OutputDimension& dimension);

/// The marker of each footnote of a table: its own, or a letter that counts those without one.
HOST_API std::vector<std::string> noteMarkers(const OutputTable& table);
