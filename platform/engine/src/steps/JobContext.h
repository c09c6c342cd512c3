#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/CsvProfile.h"
#include "dialect/Dialect.h"
#include "runtime/Cancellation.h"
#include "runtime/DataSources.h"
#include "runtime/FileSpace.h"
#include "runtime/RowSource.h"
#include "runtime/Session.h"
#include "runtime/WrittenFile.h"
#include "steps/DataFiles.h"
#include "steps/JobEngine.h"
#include "steps/Plan.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

class Container;

/// Thrown when a statement is planned that reads the output of an earlier statement that has not
/// run yet.
struct NotYetWritten
{
};

/// A row iterator that the job reads. All steps that name it share one node, because its rows can
/// be read only once.
struct IteratorInput
{
    std::unique_ptr<RowSource> source;
    NodePtr node;
};

/// The state that the steps of a job share: its session, its inputs and outputs, and what is
/// known about the files that it reads. Lives from execute to dispose.
struct JobContext
{
    /// Borrows the files and the data sources.
    JobContext(JobEngine& engine, const FileSpace& usedFiles, DataSources& usedSources)
        : files(usedFiles), dataSources(usedSources), session(engine.newSession()),
          dataFiles(engine.newFiles(*session, usedFiles)), dialect(session->dialect())
    {
    }

    const FileSpace& files;
    DataSources& dataSources;
    std::unique_ptr<Session> session;
    std::unique_ptr<const DataFiles> dataFiles; ///< borrows the session
    const Dialect& dialect;                     ///< of the session
    Cancellation* cancellation = nullptr;
    /// The job is only planned, not run. So its types must be certain, not guessed.
    bool plansOnly = false;
    MessageSink message;
    /// Receives the finished fraction, 0 to 1, of what a component does after its statement. The
    /// job passes on a hundred calls at most, so a component may call it for every series.
    std::function<void(double)> progress = [](double) {};

    std::vector<const Container*> containers;
    std::map<std::string, RowDataIterator*> iterators;
    /// Made when a step first reads an iterator. Cleared at the end of execute.
    std::map<std::string, IteratorInput> iteratorInputs;
    /// The part of the iterators' records that was read, from 0 to 1.
    double readShare() const;
    std::set<std::string> sharedIterators; ///< used in several places

    /// Keys are path and header. A complete profile is valid until the job writes the file.
    std::map<std::pair<std::string, bool>, std::shared_ptr<CsvProfile>> profiles;
    /// CSV files with bad records. They are read to the end even if only few records are wanted.
    std::set<std::string> readWhole;
    /// CSV files with records beyond the usual limits of the database.
    std::set<std::string> longRecords;
    /// CSV files that several threads of the database cannot read.
    std::set<std::string> inOneThread;
    /// Destinations of planned statements that have not run yet: canonical paths, and names of data
    /// sources.
    std::set<std::string> unwritten;
    /// A preparation of series must not keep the groups of its records in memory: they are too
    /// many.
    bool keepsNoGroups = false;
    /// Canonical paths of all files that the job has written or will write.
    std::set<std::string> announced;
    /// The files that the job has written, by name without folder.
    std::map<std::string, WrittenFile> written;
    /// Names of temporary tables, existing or not.
    std::vector<std::string> tables;
    int tablesNamed = 0;

    /// Records that the step will write a file. Throws JobError if the file exists, the job has not
    /// written it itself, and jobs may not replace files.
    void announce(const std::string& path, const std::string& step);
    /// The path for a text in a setting. Throws NotYetWritten if an earlier statement has not yet
    /// written the file.
    std::string inputPath(const std::string& text) const;
    /// A table of the local session, as a relation.
    NodePtr localTable(Fields fields, const std::string& table) const;
    /// A name for a temporary table. dropTables drops the table.
    std::string newTable(const char* prefix);
    /// Drops the temporary tables of the job except those in `kept`. Never throws.
    void dropTables(const std::set<std::string>& kept = {}) noexcept;
    /// Throws JobError if the session does not offer what the step needs.
    void require(Feature feature, const std::string& step) const;
    /// The session of the embedded database, in which components compute.
    Session& localSession() const { return session->local(); }
    /// Whether the backend is not the embedded database.
    bool isRemote() const { return &localSession() != session.get(); }
    /// The session in which statements on a relation run.
    Session& sessionOf(const Node& node) const { return node.isLocal ? localSession() : *session; }
    bool stopping() const { return cancellation && cancellation->stopping(); }

private:
    bool mayReplace(const std::string& path) const;
};

} // namespace EmbeddedHV
