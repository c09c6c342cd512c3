#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"

/// What the library asked of the host, in order: progress, lines, messages, parser notes, weight
/// and split, interrupt handlers. Tests and host programs read it; the library does not know of it.
/// All operations may be called from any thread. The journal is bounded: beyond some thousand
/// progress entries the latest takes the place of the one before it, and beyond some ten thousand
/// entries the oldest goes.
class HOST_API HostJournal
{
public:
    /// What was asked for. It decides which parts of an entry have something in them.
    enum class Kind
    {
        Progress,  ///< number: the part done
        Line,      ///< text: a line of the viewer
        Error,     ///< text, show and level of TnError
        Note,      ///< text: the key of a parser message
        Interrupt, ///< text: "set" or "clear", a handler; "fire", the user stopped a job
        Output     ///< text: another call: charts and views, measurement levels
    };
    /// Texts are UTF-8.
    struct Entry
    {
        Kind kind = Kind::Line;
        std::string text;
        double number = 0;
        int show = 0;
        int level = 0;
    };
    using Observer = std::function<void(const Entry&)>;

    HostJournal(const HostJournal&) = delete;
    HostJournal& operator=(const HostJournal&) = delete;

    /// The journal of the process.
    static HostJournal& instance();

    void add(Entry entry);
    std::vector<Entry> entries() const;
    /// The entries of one kind.
    std::vector<Entry> entries(Kind kind) const;
    void clear();
    /// At most one; called under no lock, on the thread of the call. An empty function ends it; a
    /// call that is under way on another thread may still come to its end.
    /// While an observer is set, Progress entries go to it alone and are not kept.
    void setObserver(Observer observer);

private:
    HostJournal();
    ~HostJournal();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
