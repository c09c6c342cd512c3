#include "TnPivotTable.h"

#include <utility>

#include "output/PivotTableState.h"

TnPivotTable::TnPivotTable(std::shared_ptr<PivotTableState> state) : _state(std::move(state)) {}
TnPivotTable::~TnPivotTable() = default;

void TnPivotTable::HideTitle()
{
    _state->table->hidesTitle = true;
}

void TnPivotTable::Note(const TnAnnotation& note)
{
    _state->addNote(_state->table->titleNotes, note);
}

void TnPivotTable::Caption(const TnCellText& text)
{
    _state->table->caption = text.content();
}

void TnPivotTable::CaptionNote(const TnAnnotation& note)
{
    _state->addNote(_state->table->captionNotes, note);
}

void TnPivotTable::CornerText(const TnCellText& text)
{
    _state->table->cornerText = text.content();
}

void TnPivotTable::MaxDataColumnWidth(int width)
{
    _state->table->maxDataColumnWidth = width;
}

void TnPivotTable::MinDataColumnWidth(int width)
{
    _state->table->minDataColumnWidth = width;
}

TnDimension* TnPivotTable::Dimension(const TnCellText& name, Sort sort)
{
    const int number = _state->declareDimension(name.content(), sort);
    // The constructor is private, so make_unique cannot be used. The caller deletes the dimension.
    return new TnDimension(_state, number);
}
