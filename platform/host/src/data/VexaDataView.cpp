#include "VexaDataViews.h"

VEXA_DataView::VEXA_DataView(const VEXA_DataSource& source) : _source(source) {}
VEXA_DataView::~VEXA_DataView() = default;

int VEXA_DataView::ColumnCount() const
{
    return _source.ColumnCount();
}

const VEXA_Variable& VEXA_DataView::GetVariable(int column) const
{
    return _source.GetVariable(column);
}

int VEXA_DataView::GetWeightVarIndex() const
{
    return _source.GetWeightVarIndex();
}

int VEXA_DataView::GetNSplitVars() const
{
    return _source.GetNSplitVars();
}

int VEXA_DataView::GetSplitVarIndex(int position) const
{
    return _source.GetSplitVarIndex(position);
}
