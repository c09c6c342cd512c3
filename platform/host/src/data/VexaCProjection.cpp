#include <algorithm>

#include "VexaDataViews.h"

VEXA_CProjection::VEXA_CProjection(const VEXA_DataSource& source, std::vector<int> columns)
    : VEXA_DataView(source), _columns(std::move(columns))
{
    for (const int column : _columns)
        source.GetVariable(column); // throws if it does not exist
}

const VEXA_Variable& VEXA_CProjection::GetVariable(int column) const
{
    const bool known = column >= 0 && column < ColumnCount();
    return source().GetVariable(known ? _columns[static_cast<std::size_t>(column)] : -1);
}

int VEXA_CProjection::placeOf(int sourceColumn) const
{
    const auto found = std::find(_columns.begin(), _columns.end(), sourceColumn);
    return found == _columns.end() ? -1 : static_cast<int>(found - _columns.begin());
}

int VEXA_CProjection::GetWeightVarIndex() const
{
    const int weight = source().GetWeightVarIndex();
    return weight < 0 ? -1 : placeOf(weight);
}

int VEXA_CProjection::GetNSplitVars() const
{
    int count = 0;
    for (int i = 0; i < source().GetNSplitVars(); ++i)
        count += placeOf(source().GetSplitVarIndex(i)) >= 0 ? 1 : 0;
    return count;
}

int VEXA_CProjection::GetSplitVarIndex(int position) const
{
    for (int i = 0; i < source().GetNSplitVars() && position >= 0; ++i) {
        const int place = placeOf(source().GetSplitVarIndex(i));
        if (place >= 0 && position-- == 0)
            return place;
    }
    return -1;
}

VEXA_InputCaseIterator* VEXA_CProjection::MakeIterator(ErrorMonitor* monitor) const
{
    return source().MakeProjectedIterator(_columns, monitor);
}

VEXA_InputCaseIterator* VEXA_CProjection::MakeProjectedIterator(const std::vector<int>& columns,
                                                                ErrorMonitor* monitor) const
{
    std::vector<int> chosen;
    for (const int column : columns) {
        GetVariable(column);
        chosen.push_back(_columns[static_cast<std::size_t>(column)]);
    }
    return source().MakeProjectedIterator(chosen, monitor);
}
