#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "DataFileNames.h"
#include "datafile/CsvProfile.h"
#include "runtime/Session.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// The file that the check reads, and the records that may be skipped.
struct CsvCheckSettings
{
    std::string path;
    bool hasHeader = false;
    Fields fields;
    std::int64_t errorThreshold = 0;
    std::uint64_t mostRecords = UINT64_MAX;
    std::string rejects;                        ///< the table of skipped records, or empty
    std::set<std::string>* readWhole = nullptr; ///< collects files that must be read again
    /// Collects files with records that the database's usual limits exclude; null if it reads with
    /// higher ones.
    std::set<std::string>* longRecords = nullptr;
    /// Collects files that several threads cannot read; null if only one reads, or if there is no
    /// second try.
    std::set<std::string>* inOneThread = nullptr;
    std::shared_ptr<CsvProfile> guess; ///< null if a data model gives the types
};

/// Checks a CSV file while a statement reads it. The database takes the types from the head of the
/// file and may convert later values with losses, for example 1.5 to the integer 2. So the rest of
/// the file is checked on another thread, in parallel with the statement.
class CsvCheck : public SourceCheck
{
public:
    explicit CsvCheck(CsvCheckSettings settings);
    CsvCheck(const CsvCheck&) = delete;
    CsvCheck& operator=(const CsvCheck&) = delete;
    ~CsvCheck() override;

    void readsOnly(const std::set<std::string>& fields) override;
    void start(Cancellation& cancellation, const Progress& progress) override;
    void finish(Session& session, Reporter& reporter) override;
    void abandon(const StatementFault& fault) override;

private:
    void readRest();
    void findFatalFlaw();
    bool guessHolds() const;
    bool goOn() const;
    void guessAgain();
    void join(bool toTheEnd);
    void countRejects(Session& session, Reporter& reporter);
    std::size_t countWithinLimit(const RejectedRecords& bad) const;
    [[noreturn]] void refuseRecord(const RejectedRecords& bad, std::size_t record) const;
    void refuseMisfit(const CsvProfile::Misfit& misfit) const;
    bool needsHigherLimits() const;
    void raiseLimits();
    void scan();
    bool misleadsThreads() const;
    [[noreturn]] void readInOneThread();
    void avoidThreads();
    bool hasFlaw() const;
    void refuseFlaw() const;
    void refuseFatalFlaw(std::uint64_t skipped) const;
    void refuseProblems();

    CsvCheckSettings _settings;
    std::shared_ptr<CsvProfile>
        _profile; ///< the profile that reads the rest; null if that is not needed
    /// The columns that the statement reads; null: all.
    std::optional<std::vector<bool>> _columnsRead;
    /// With an error threshold: the first flaw that does not allow to skip its record.
    std::optional<datafile::CsvFlaw> _fatalFlaw;
    bool _hasLongRecord = false; ///< found by a scan without `_profile`
    bool _hasQuotes = false;     ///< likewise
    Cancellation* _cancellation = nullptr;
    std::atomic<bool> _stop = false;
    std::exception_ptr _failure;
    std::thread _thread;
};

} // namespace EmbeddedHV
