#include "data/CaseViews.h"

#include <algorithm>
#include <iterator>

#include "MultiByte.h"

namespace {

/// Texts need a conversion; numbers do not.
bool hasText(const VEXA_DataSource& source)
{
    for (int column = 0; column < source.ColumnCount(); ++column)
        if (source.GetVariable(column).GetType() >= 1)
            return true;
    return false;
}

} // namespace

void CaseViews::open(const VEXA_DataSource& source, const std::vector<int>& variables,
                     ErrorMonitor* monitor)
{
    std::vector<int> columns;
    std::copy_if(variables.begin(), variables.end(), std::back_inserter(columns),
                 [](int column) { return column >= 0; });
    if (!columns.empty())
        _projection = std::make_shared<VEXA_CProjection>(source, columns);
    _top = &source;
    if (_projection)
        _top = _projection.get();
    if (!qUTF8mode() && hasText(*_top))
        convert(*_top, monitor);
}

/// The engine reads UTF-8, possibly repeatedly. The copy is converted only once.
void CaseViews::convert(const VEXA_DataSource& current, ErrorMonitor* monitor)
{
    if (!monitor) {
        _ownMonitor = std::make_shared<VexaErrorMonitor>(&Reporter);
        monitor = _ownMonitor.get();
    }
    _utf8View = std::make_shared<UTF8DataSource>(current, VEXAMBDefaultCodePage(), monitor);
    _temporaryStore = std::make_shared<TempFileDataStore>(*_utf8View);
    _top = _temporaryStore.get();
}
