#pragma once

#include <memory>

#include "HostExport.h"
#include "TnAnnotation.h"
#include "TnCellText.h"

struct PivotTableState;
class TnDimension;

/// A pivot table of the output, while it is built. It appears in the output with its first call.
/// The object writes to the table and may be destroyed before or after its dimensions. One thread
/// at a time.
///
/// A table has no row or column numbers. A dimension, group or category that is declared again with
/// equal text is the existing one and becomes open again. A cell belongs to the intersection of the
/// open categories of all dimensions. Cells that are written before a new dimension is declared are
/// lost.
///
/// Equal text may have different meanings: two values may have the same label. If each dimension is
/// declared inside an open category of the dimensions before it, as in a walk over all
/// combinations, the table distinguishes them by the order of their declarations:
///  - If one declaration of a dimension or group contains a text twice, it has two categories of
///    that text. The next declaration repeats both, in the same order.
///  - A dimension with the name of another one, whose object still exists, is a separate dimension.
/// If dimensions are declared side by side, before any category is open, only the text decides.
///
///     std::unique_ptr<TnPivotTable> table(heading.PivotTable(title, subtype, true));
///     const auto sort = TnPivotTable::Unsorted;
///     std::unique_ptr<TnDimension> rows(table->Dimension(TnString("row"), sort));
///     std::unique_ptr<TnDimension> columns(table->Dimension(TnString("col"), sort));
///     columns->Position(TnDimension::Column, 1, false, false);
///     rows->Category(TnString("age"));
///     columns->Category(TnString("mean")).Cell(TnNumber(41.5, TnProcedure::GeneralStat()));
class HOST_API TnPivotTable
{
public:
    /// The display order of categories, by their texts.
    enum Sort : int
    {
        Ascending = 0,
        Descending = 1,
        Unsorted = 2
    };
    ~TnPivotTable();
    TnPivotTable(const TnPivotTable&) = delete;
    TnPivotTable& operator=(const TnPivotTable&) = delete;

    /// Hides the title of the table; outlines still show it.
    void HideTitle();
    /// Adds a footnote to the title. Footnotes with equal text share a marker in a table.
    void Note(const TnAnnotation& note);
    /// Sets the caption.
    void Caption(const TnCellText& text);
    /// Adds a footnote to the caption.
    void CaptionNote(const TnAnnotation& note);
    /// Sets the text of the corner above the row labels.
    void CornerText(const TnCellText& text);
    /// Sets the maximum width of a data column in points.
    void MaxDataColumnWidth(int width);
    /// Sets the minimum width of a data column in points.
    void MinDataColumnWidth(int width);
    /// Declares a dimension; a new one is the last row dimension until Position is called. The
    /// caller deletes the result.
    TnDimension* Dimension(const TnCellText& name, Sort sort);

private:
    friend class TnHeading;
    explicit TnPivotTable(std::shared_ptr<PivotTableState> state);
    std::shared_ptr<PivotTableState> _state; ///< shared with the table
};

/// A category of a dimension: a value that refers to one leaf.
class HOST_API TnCategory
{
public:
    /// Hides the category; its cells are kept.
    void hide();
    /// Adds a footnote to the label.
    void Note(const TnAnnotation& note);
    /// Sets the cell at the intersection of this category and the open categories of the other
    /// dimensions. Does nothing while a dimension has no open category.
    void Cell(const TnCellText& text);
    /// Adds a footnote to that cell, under the same condition.
    void CellNote(const TnAnnotation& note);

private:
    friend class TnGroup;
    TnCategory(std::shared_ptr<PivotTableState> state, int dimension, int node);
    std::shared_ptr<PivotTableState> _state; ///< shared with the table
    int _dimension;                          ///< index of the dimension in the table
    int _node;                               ///< index of the node in the dimension
};

/// A group of categories.
class HOST_API TnGroup
{
public:
    /// The display order of categories: by their texts or as declared.
    enum Sort : int
    {
        Ascending = 0,
        Descending = 1,
        Unsorted = 2
    };
    virtual ~TnGroup();
    TnGroup(const TnGroup&) = delete;
    TnGroup& operator=(const TnGroup&) = delete;

    /// Declares a group inside this one. The caller deletes the result. `show`: its label is shown.
    TnGroup* Group(const TnCellText& label, bool show, Sort sort);
    /// Declares and opens a category.
    TnCategory Category(const TnCellText& label);
    /// Adds a footnote to the label.
    virtual void Note(const TnAnnotation& note);

protected:
    /// For the host: shows a node of a dimension.
    TnGroup(std::shared_ptr<PivotTableState> state, int dimension, int node);
    std::shared_ptr<PivotTableState> _state; ///< shared with the table
    int _dimension;                          ///< index of the dimension in the table
    int _node;                               ///< index of the node in the dimension
};

/// A dimension of a pivot table; the parent of its top-level categories.
class HOST_API TnDimension : public TnGroup
{
public:
    /// The place of a dimension in the table.
    enum Place : int
    {
        Row = 0,    ///< beside the rows
        Column = 1, ///< above the columns
        Layer = 2   ///< one category is shown at a time
    };
    ~TnDimension() override;
    /// Sets place and labels. `position` counts from 1 among the dimensions of the same place, the
    /// outermost first.
    void Position(Place place, int position, bool hideName, bool hideChildren);
    /// Adds a footnote to the dimension's name.
    void Note(const TnAnnotation& note) override;

private:
    friend class TnPivotTable;
    TnDimension(std::shared_ptr<PivotTableState> state, int dimension);
};
