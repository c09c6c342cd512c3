#include "output/LiveHeadings.h"

#include <algorithm>
#include <cstddef>
#include <mutex>

#include "TnHeading.h"
#include "VexaDataSource.h"
#include "text/CodePage.h"

namespace {

/// A living heading and its procedure; null after the procedure is destroyed.
struct Entry
{
    const TnHeading* heading = nullptr;
    const TnProcedure* procedure = nullptr;
    std::shared_ptr<OutputHeading> node;
    bool isProcedure = false;
};

struct LiveHeadings
{
    std::mutex mutex;
    std::vector<Entry> entries;

    const Entry* entryOf(const TnHeading& heading) const
    {
        const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
            return entry.heading == &heading;
        });
        return found != entries.end() ? &*found : nullptr;
    }

    // The latest entry for which `question` returns true.
    template <typename Question>
    const Entry* latest(Question question) const
    {
        const auto found = std::find_if(entries.rbegin(), entries.rend(), question);
        return found != entries.rend() ? &*found : nullptr;
    }

    const TnProcedure* currentProcedure() const
    {
        const Entry* entry = latest([](const Entry& each) { return each.isProcedure; });
        return entry ? entry->procedure : nullptr;
    }
};

LiveHeadings& live()
{
    static LiveHeadings instance;
    return instance;
}

/// Empty for an invalid position, for example of a split variable without a value.
std::string textAt(const std::vector<std::string>& texts, int position)
{
    const auto index = static_cast<std::size_t>(position);
    return position >= 0 && index < texts.size() ? hostToUtf8(texts[index]) : std::string();
}

SplitList splitListOf(const TnProcedure* procedure)
{
    SplitList list;
    if (!procedure)
        return list;
    const ProcedureDataSource& source = procedure->DataSource();
    const std::vector<std::string> names = source.ColumnNames();
    for (int i = 0; i < source.GetNSplitVars(); ++i)
        list.emplace_back(textAt(names, source.GetSplitVarIndex(i)),
                          textAt(source.SplitValues(), i));
    return list;
}

} // namespace

void beginHeading(const TnHeading& heading, const TnHeading& parent)
{
    const std::lock_guard lock(live().mutex);
    // The parent may be destroyed; then the heading has no procedure.
    const Entry* above = live().entryOf(parent);
    const TnProcedure* procedure = above ? above->procedure : nullptr;
    live().entries.push_back({&heading, procedure, heading.node(), false});
}

void beginProcedure(const TnProcedure& procedure)
{
    const std::lock_guard lock(live().mutex);
    live().entries.push_back({&procedure, &procedure, procedure.node(), true});
}

void endHeading(const TnHeading& heading)
{
    const std::lock_guard lock(live().mutex);
    std::erase_if(live().entries, [&](const Entry& entry) { return entry.heading == &heading; });
    // A heading may outlive its procedure, which must not be used afterwards.
    for (Entry& entry : live().entries)
        if (entry.procedure == &heading)
            entry.procedure = nullptr;
}

std::shared_ptr<OutputHeading> currentHeading()
{
    const std::lock_guard lock(live().mutex);
    const TnProcedure* procedure = live().currentProcedure();
    if (!procedure)
        return nullptr;
    return live().latest([&](const Entry& entry) { return entry.procedure == procedure; })->node;
}

std::vector<std::shared_ptr<OutputHeading>> liveProcedures()
{
    const std::lock_guard lock(live().mutex);
    std::vector<std::shared_ptr<OutputHeading>> procedures;
    for (const Entry& entry : live().entries)
        if (entry.isProcedure)
            procedures.push_back(entry.node);
    return procedures;
}

SplitList currentSplitList()
{
    const std::lock_guard lock(live().mutex);
    return splitListOf(live().currentProcedure());
}

SplitList splitListOf(const TnHeading& heading)
{
    const std::lock_guard lock(live().mutex);
    const Entry* entry = live().entryOf(heading);
    return splitListOf(entry ? entry->procedure : nullptr);
}
