#pragma once

#include "TnPivotTable.h"
#include "render/CellLabels.h"
#include "render/CellStore.h"
#include "render/CellStyles.h"
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
    /// Without a cell there may still be footnotes.
    void place(TnCategory& category, const Cell* cell, const CellStyle& style) const;

private:
    void placeContent(TnCategory& category, const Cell& cell, const CellStyle& style) const;
    void placeNumber(TnCategory& category, double value, const CellStyle& style) const;
    bool placeLabel(TnCategory& category, double value, const CellStyle& style) const;

    const CellStore& _store;
    const CellLabels& _labels;
    const Footnotes& _footnotes;
};
