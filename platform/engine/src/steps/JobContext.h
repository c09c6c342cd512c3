#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/CsvProfile.h"
#include "runtime/Cancellation.h"
#include "runtime/DataSources.h"
#include "runtime/Database.h"
#include "runtime/FileSpace.h"
#include "runtime/RowFile.h"
#include "runtime/RowSource.h"
#include "steps/Plan.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

class Container;

/// Thrown by the planning of a statement that reads what an earlier statement is yet to write.
struct NotYetWritten
{
};

/// A row iterator that the job reads: one node for all steps that name it, since its rows come
/// once.
struct IteratorInput
{
    std::unique_ptr<RowSource> source;
    NodePtr node;
};

/// What the steps of one job share: its connection, its inputs and outputs, and what it has learnt
/// about the files that it reads. Lives from execute to dispose.
struct JobContext
{
    JobContext(Database& usedDatabase, const FileSpace& usedFiles, DataSources& usedSources)
        : database(usedDatabase), files(usedFiles), dataSources(usedSources),
          connection(usedDatabase.connect())
    {
    }

    Database& database;
    const FileSpace& files;
    DataSources& dataSources;
    ConnectionLease connection;
    Cancellation* cancellation = nullptr;
    /// The plan is all that is wanted: types that it has guessed must hold.
    bool plansOnly = false;
    MessageSink message;

    std::vector<const Container*> containers;
    std::map<std::string, RowDataIterator*> iterators;
    /// Made when a step first reads an iterator; gone at the end of execute.
    std::map<std::string, IteratorInput> iteratorInputs;
    std::set<std::string> sharedIterators; ///< read at more than one place

    /// By path and header. A profile that is complete stays valid until the job writes the file.
    std::map<std::pair<std::string, bool>, std::shared_ptr<CsvProfile>> profiles;
    /// CSV files that are read to the end even if few of their records are asked for: some are bad.
    std::set<std::string> readWhole;
    /// Destinations of statements that are planned but have not run: canonical paths, and names of
    /// data sources.
    std::set<std::string> unwritten;
    /// Canonical paths of all files that the job is to write or has written.
    std::set<std::string> announced;
    /// The files that the job has written, by name without folder.
    std::map<std::string, WrittenFile> written;
    /// Names of temporary tables, made or yet to be made.
    std::vector<std::string> tables;
    int tablesNamed = 0;

    /// Notes a file that the step is to write. Throws JobError if the file is there already, the
    /// job has not written it itself, and jobs may not replace files.
    void announce(const std::string& path, const std::string& step);
    /// The path of a text in a setting, or NotYetWritten.
    std::string inputPath(const std::string& text) const;
    /// The name for a temporary table, which dropTables drops.
    std::string newTable(const char* prefix);
    /// Drops the temporary tables of the job but those that are kept. Never throws.
    void dropTables(const std::set<std::string>& kept = {}) noexcept;
    bool stopping() const { return cancellation && cancellation->stopping(); }

private:
    bool mayReplace(const std::string& path) const;
};

} // namespace EmbeddedHV
