#pragma once

#include "TnPivotTable.h"
#include "render/CellLabels.h"
#include "render/CellStore.h"
#include "render/CellStyles.h"
#include "render/Footnotes.h"

/// Places cells of the store at the open categories.
class CellPlacer
{
public:
    /// All are borrowed.
    CellPlacer(const CellStore& store, const CellLabels& labels, const Footnotes& footnotes)
        : _store(store), _labels(labels), _footnotes(footnotes)
    {
    }
    /// Places content and footnotes. `cell` may be null; then only footnotes are placed.
    void place(TnCategory& category, const Cell* cell, const CellStyle& style) const;

private:
    void placeContent(TnCategory& category, const Cell& cell, const CellStyle& style) const;
    void placeNumber(TnCategory& category, double value, const CellStyle& style) const;
    bool placeLabel(TnCategory& category, double value, const CellStyle& style) const;

    const CellStore& _store;
    const CellLabels& _labels;
    const Footnotes& _footnotes;
};
