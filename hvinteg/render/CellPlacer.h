#pragma once

#include "TnPivotTable.h"
#include "render/CellLabels.h"
#include "render/CellStore.h"
#include "render/Footnotes.h"

/// Puts cells of the store where the open categories meet.
class CellPlacer
{
public:
    /// All are borrowed.
    CellPlacer(const CellStore& store, const CellLabels& labels, const Footnotes& footnotes)
        : _store(store), _labels(labels), _footnotes(footnotes)
    {
    }
    /// Gives the cell, too, the format in which it is shown.
    void place(TnCategory& category, Cell& cell) const;

private:
    void placeNumber(TnCategory& category, Cell& cell) const;
    bool placeLabel(TnCategory& category, const Cell& cell) const;

    const CellStore& _store;
    const CellLabels& _labels;
    const Footnotes& _footnotes;
};
