#include "Journal.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <mutex>

namespace {

// Limits of the journal. A long job would fill it with progress entries, so a new one replaces the
// last.
constexpr std::size_t kMaxEntries = 65536;
constexpr std::size_t kMaxProgressEntries = 4096;

} // namespace

struct HostJournal::Impl
{
    void keep(Entry entry);

    mutable std::mutex mutex;
    std::deque<Entry> entries;
    std::size_t progressCount = 0;
    Observer observer;
};

void HostJournal::Impl::keep(Entry entry)
{
    const bool isProgress = entry.kind == Kind::Progress;
    if (isProgress && progressCount >= kMaxProgressEntries && !entries.empty() &&
        entries.back().kind == Kind::Progress) {
        entries.back() = std::move(entry);
        return;
    }
    if (entries.size() >= kMaxEntries) {
        progressCount -= entries.front().kind == Kind::Progress ? 1 : 0;
        entries.pop_front();
    }
    progressCount += isProgress ? 1 : 0;
    entries.push_back(std::move(entry));
}

HostJournal::HostJournal() : _impl(std::make_unique<Impl>()) {}
HostJournal::~HostJournal() = default;

HostJournal& HostJournal::instance()
{
    static HostJournal journal;
    return journal;
}

void HostJournal::add(Entry entry)
{
    Observer observer;
    {
        const std::lock_guard lock(_impl->mutex);
        observer = _impl->observer;
        if (!observer) {
            _impl->keep(std::move(entry));
            return;
        }
        if (entry.kind != Kind::Progress)
            _impl->keep(entry);
    }
    // Without the lock, because an observer may use the journal.
    observer(entry);
}

std::vector<HostJournal::Entry> HostJournal::entries() const
{
    const std::lock_guard lock(_impl->mutex);
    return {_impl->entries.begin(), _impl->entries.end()};
}

std::vector<HostJournal::Entry> HostJournal::entries(Kind kind) const
{
    const std::lock_guard lock(_impl->mutex);
    std::vector<Entry> chosen;
    std::copy_if(_impl->entries.begin(), _impl->entries.end(), std::back_inserter(chosen),
                 [kind](const Entry& entry) { return entry.kind == kind; });
    return chosen;
}

void HostJournal::clear()
{
    const std::lock_guard lock(_impl->mutex);
    _impl->entries.clear();
    _impl->progressCount = 0;
}

void HostJournal::setObserver(Observer observer)
{
    const std::lock_guard lock(_impl->mutex);
    _impl->observer = std::move(observer);
}
