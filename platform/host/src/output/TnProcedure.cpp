#include "TnOutput.h"

#include <mutex>

#include "VexaDataSource.h"
#include "output/CurrentProcedure.h"
#include "text/CodePage.h"

namespace {

/// The procedures that are alive, the current one last. They need not end in the order in which
/// they began.
struct LiveProcedures
{
    std::mutex mutex;
    std::vector<const TnProcedure*> procedures;
};

LiveProcedures& live()
{
    static LiveProcedures instance;
    return instance;
}

std::string textAt(const std::vector<std::string>& texts, int position)
{
    const auto index = static_cast<std::size_t>(position);
    return position >= 0 && index < texts.size() ? hostToUtf8(texts[index]) : std::string();
}

} // namespace

struct TnProcedure::Impl
{
    std::string name;
    ProcedureDataSource* given = nullptr;
    ProcedureDataSource empty;
};

TnProcedure::TnProcedure(std::string name, ProcedureDataSource* dataSource)
    : _impl(std::make_unique<Impl>())
{
    _impl->name = std::move(name);
    _impl->given = dataSource;
    const std::lock_guard lock(live().mutex);
    live().procedures.push_back(this);
}

TnProcedure::~TnProcedure()
{
    const std::lock_guard lock(live().mutex);
    std::erase(live().procedures, this);
}

const std::string& TnProcedure::Name() const
{
    return _impl->name;
}

ProcedureDataSource& TnProcedure::DataSource() const
{
    return _impl->given ? *_impl->given : _impl->empty;
}

std::vector<std::pair<std::string, std::string>> currentSplitList()
{
    const std::lock_guard lock(live().mutex);
    std::vector<std::pair<std::string, std::string>> list;
    if (live().procedures.empty())
        return list;
    const ProcedureDataSource& source = live().procedures.back()->DataSource();
    for (int i = 0; i < source.GetNSplitVars(); ++i)
        list.emplace_back(textAt(source.ColumnNames(), source.GetSplitVarIndex(i)),
                          textAt(source.SplitValues(), i));
    return list;
}
