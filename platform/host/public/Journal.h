#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"

/// Records the library's calls to the host, in order: progress, lines, messages, parser notes,
/// weight and split, interrupt handlers. Tests and host programs read it; the library does not use
/// it. Any thread. Its size is limited: after some thousand progress entries a new one replaces the
/// last, and after some ten thousand entries the oldest is removed.
class HOST_API HostJournal
{
public:
    /// Kind of call. It determines the members of an entry that are used.
    enum class Kind
    {
        Progress,  ///< number: the fraction done
        Line,      ///< text: a line of the viewer
        Error,     ///< text, show and level of TnError
        Note,      ///< text: the key of a parser message
        Interrupt, ///< text: "set" or "clear" a handler; "fire": the user stopped a job
        Output     ///< text: other calls: charts and views, measurement levels
    };
    /// Texts are UTF-8.
    struct Entry
    {
        Kind kind = Kind::Line; ///< what was requested
        std::string text;       ///< UTF-8
        double number = 0;      ///< its meaning depends on the kind
        int show = 0;           ///< of a message, as for TnError
        int level = 0;          ///< of a message, as for TnError
    };
    /// Called for each new entry.
    using Observer = std::function<void(const Entry&)>;

    HostJournal(const HostJournal&) = delete;
    HostJournal& operator=(const HostJournal&) = delete;

    /// The journal of the process.
    static HostJournal& instance();

    /// Appends an entry and calls the observer.
    void add(Entry entry);
    /// A copy of all entries.
    std::vector<Entry> entries() const;
    /// A copy of the entries of one kind.
    std::vector<Entry> entries(Kind kind) const;
    /// Removes all entries.
    void clear();
    /// Sets the only observer; an empty function removes it. It is called without a lock, on the
    /// thread of the call; after its removal a call on another thread may still be in progress.
    /// While an observer is set, Progress entries are passed to it and not stored.
    void setObserver(Observer observer);

private:
    HostJournal();
    ~HostJournal();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
