#include <utility>

#include "TnPivotTable.h"
#include "TnValues.h"
#include "output/PivotTableState.h"

namespace {

constexpr int kDimensionNode = 0;

/// A group inside a dimension or another group.
class SubGroup final : public TnGroup
{
public:
    SubGroup(std::shared_ptr<PivotTableState> state, int dimension, int node)
        : TnGroup(std::move(state), dimension, node)
    {
    }
};

} // namespace

TnGroup::TnGroup(std::shared_ptr<PivotTableState> state, int dimension, int node)
    : _state(std::move(state)), _dimension(dimension), _node(node)
{
}

TnGroup::~TnGroup() = default;

TnGroup* TnGroup::Group(const TnCellText& label, bool show, Sort sort)
{
    const int number = _state->declareChild(_dimension, _node, true, label.content());
    OutputCategory& group = _state->node(_dimension, number);
    group.isShown = show;
    group.sort = sort;
    return std::make_unique<SubGroup>(_state, _dimension, number).release();
}

TnCategory TnGroup::Category(const TnCellText& label)
{
    const int number = _state->declareChild(_dimension, _node, false, label.content());
    _state->open(_dimension, number);
    return {_state, _dimension, number};
}

void TnGroup::Note(const TnAnnotation& note)
{
    _state->addNote(_state->node(_dimension, _node).notes, note);
}

TnDimension::TnDimension(std::shared_ptr<PivotTableState> state, int dimension)
    : TnGroup(std::move(state), dimension, kDimensionNode)
{
    _state->beginDeclaration(dimension);
}

TnDimension::~TnDimension()
{
    _state->endDeclaration(_dimension);
}

void TnDimension::Position(Place place, int position, bool hideName, bool hideChildren)
{
    OutputDimension& dimension = _state->dimension(_dimension);
    dimension.place = place;
    dimension.position = position;
    dimension.hidesName = hideName;
    dimension.hidesChildren = hideChildren;
}

void TnDimension::Note(const TnAnnotation& note)
{
    _state->addNote(_state->dimension(_dimension).notes, note);
}

TnCategory::TnCategory(std::shared_ptr<PivotTableState> state, int dimension, int node)
    : _state(std::move(state)), _dimension(dimension), _node(node)
{
}

void TnCategory::hide()
{
    _state->node(_dimension, _node).isShown = false;
}

void TnCategory::Note(const TnAnnotation& note)
{
    _state->addNote(_state->node(_dimension, _node).notes, note);
}

void TnCategory::Cell(const TnCellText& text)
{
    const OutputCells::Address address = _state->addressOf(_dimension, _node);
    if (address.empty())
        return;
    // A number needs no text until the table is shown.
    if (const auto* number = dynamic_cast<const TnNumber*>(&text))
        _state->table->cells.setNumber(address, number->value(), number->format());
    else
        _state->table->cells.setContent(address, text.content());
}

void TnCategory::CellNote(const TnAnnotation& note)
{
    const OutputCells::Address address = _state->addressOf(_dimension, _node);
    const int place = address.empty() ? -1 : _state->note(note);
    if (place >= 0)
        _state->table->cells.addNote(address, place);
}
