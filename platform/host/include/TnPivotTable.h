#pragma once

#include <memory>

#include "HostExport.h"
#include "TnAnnotation.h"
#include "TnCellText.h"

struct PivotTableState;
class TnDimension;

/// A pivot table of the output, while it is being told. It stands in the output from its first
/// call on; the object is how to speak to it, and may go before or after its dimensions do. One
/// thread at a time.
///
/// A table has no numbers of rows and columns. A dimension, a group or a category that is declared
/// again with equal text is the one that was declared before, and becomes open again; a cell lies
/// where the open categories of all dimensions meet. Cells that are told before the last new
/// dimension lie nowhere in it, and are lost.
///
/// Equal text does not always mean the same thing: two values may have one label. Where each
/// dimension is declared inside an open category of the ones before it, as a walk over all
/// combinations does, the table tells them apart by the order of their declarations:
///  - One declaration of a dimension or a group that names a text twice has two categories of that
///    text. The next declaration names both again, in the same order.
///  - A dimension with the name of another one, declared while the object of that one exists, is a
///    dimension by itself.
/// Where dimensions are declared side by side, before any category is open, text alone decides.
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
    /// The order in which categories are shown, by their texts.
    enum Sort : int
    {
        Ascending = 0,
        Descending = 1,
        Unsorted = 2
    };
    ~TnPivotTable();
    TnPivotTable(const TnPivotTable&) = delete;
    TnPivotTable& operator=(const TnPivotTable&) = delete;

    /// The table is shown without its title, which outlines still have.
    void HideTitle();
    /// A footnote of the title. Footnotes of equal text share one marker in a table.
    void Note(const TnAnnotation& note);
    void Caption(const TnCellText& text);
    void CaptionNote(const TnAnnotation& note);
    void CornerText(const TnCellText& text);
    /// Widths in points.
    void MaxDataColumnWidth(int width);
    void MinDataColumnWidth(int width);
    /// Declares a dimension, at first as the last of the rows; the caller deletes it.
    TnDimension* Dimension(const TnCellText& name, Sort sort);

private:
    friend class TnHeading;
    explicit TnPivotTable(std::shared_ptr<PivotTableState> state);
    std::shared_ptr<PivotTableState> _state;
};

/// A category of a dimension: a plain value that speaks of one leaf of it.
class HOST_API TnCategory
{
public:
    /// Takes the category out of sight; its cells are kept.
    void hide();
    void Note(const TnAnnotation& note);
    /// Sets the cell where this category and the open categories of the other dimensions meet, and
    /// gives it a footnote. Nothing happens while a dimension has no open category.
    void Cell(const TnCellText& text);
    void CellNote(const TnAnnotation& note);

private:
    friend class TnGroup;
    TnCategory(std::shared_ptr<PivotTableState> state, int dimension, int node);
    std::shared_ptr<PivotTableState> _state;
    int _dimension;
    int _node;
};

/// A group of categories.
class HOST_API TnGroup
{
public:
    /// The order in which categories are shown: of their texts, or as they came.
    enum Sort : int
    {
        Ascending = 0,
        Descending = 1,
        Unsorted = 2
    };
    virtual ~TnGroup();
    TnGroup(const TnGroup&) = delete;
    TnGroup& operator=(const TnGroup&) = delete;

    /// Declares a group inside this one; the caller deletes it. `show`: whether its label is shown.
    TnGroup* Group(const TnCellText& label, bool show, Sort sort);
    /// Declares and opens a category.
    TnCategory Category(const TnCellText& label);
    virtual void Note(const TnAnnotation& note);

protected:
    TnGroup(std::shared_ptr<PivotTableState> state, int dimension, int node);
    std::shared_ptr<PivotTableState> _state;
    int _dimension;
    int _node;
};

/// A dimension of a pivot table; the parent of its top categories.
class HOST_API TnDimension : public TnGroup
{
public:
    /// Where in the table a dimension stands.
    enum Place : int
    {
        Row = 0,
        Column = 1,
        Layer = 2
    };
    ~TnDimension() override;
    /// `position` counts from 1 among the dimensions of the same place, the outermost first.
    void Position(Place place, int position, bool hideName, bool hideChildren);
    /// A footnote of the dimension's name.
    void Note(const TnAnnotation& note) override;

private:
    friend class TnPivotTable;
    TnDimension(std::shared_ptr<PivotTableState> state, int dimension);
};
