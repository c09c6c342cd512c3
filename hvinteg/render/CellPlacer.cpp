#include "render/CellPlacer.h"

#include "TnStrings.h"
#include "TnValues.h"
#include "VexaCases.h"

void CellPlacer::place(TnCategory& category, Cell& cell) const
{
    if (cell.value != Cell::kNoValue)
        placeNumber(category, cell);
    else if (cell.text != 0)
        category.Cell(TnUTF8String(_labels.labelsOf(_store.textOf(cell))));
    if (cell.footnotes != 0)
        _footnotes.forEach(_store.footnotesOf(cell),
                           [&](const TnAnnotation& note) { category.CellNote(note); });
}

/// A cell of a string format names a label, if its value is one.
bool CellPlacer::placeLabel(TnCategory& category, const Cell& cell) const
{
    if (cell.format.type != kFormatString)
        return false;
    const auto label = _labels.labelOf(cell.value);
    if (label)
        category.Cell(TnUTF8String(*label));
    return label.has_value();
}

void CellPlacer::placeNumber(TnCategory& category, Cell& cell) const
{
    if (placeLabel(category, cell))
        return;
    if (cell.format.type == CellFormat::kNoType)
        cell.format = CellFormat::generalNumber;
    const double value =
        // The host has no infinite numbers to show.
        cell.infinite != 0 ? kSystemMissing : CellFormat::toHostDate(cell.value, cell.format, true);
    category.Cell(TnNumber(value, TnFormatSpec(cell.format)));
}
