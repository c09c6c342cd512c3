#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <set>
#include <string>
#include <thread>

#include "DataFileNames.h"
#include "datafile/CsvProfile.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// What the check reads, and which records it may pass over.
struct CsvCheckSettings
{
    std::string path;
    bool hasHeader = false;
    Fields fields;
    std::int64_t errorThreshold = 0;
    std::uint64_t mostRecords = UINT64_MAX;
    std::string rejects; ///< the table of skipped records; empty if none is kept
    std::set<std::string>* readWhole = nullptr; ///< where to note a file that has to be read anew
    std::shared_ptr<CsvProfile> guess;          ///< null if a data model gives the types
};

/// Looks after a CSV file while a statement reads it. The database converts with losses where the
/// head of the file does not show them coming (1.5 becomes the integer 2), so the rest of the file
/// is gone through on a thread of its own, beside the statement.
class CsvCheck : public SourceCheck
{
public:
    explicit CsvCheck(CsvCheckSettings settings);
    CsvCheck(const CsvCheck&) = delete;
    CsvCheck& operator=(const CsvCheck&) = delete;
    ~CsvCheck() override;

    void start(Cancellation& cancellation) override;
    void finish(duck::Connection& connection, Reporter& reporter) override;
    void abandon(const std::string& databaseMessage) override;

private:
    void readRest();
    bool guessHolds() const;
    bool goOn() const;
    void guessAnew();
    void join(bool toTheEnd);
    void countRejects(duck::Connection& connection, Reporter& reporter);
    bool hasRejects(duck::Connection& connection) const;
    std::size_t countWithinLimit(duck::Result& bad) const;
    [[noreturn]] void refuseRecord(duck::Result& bad, std::size_t record) const;
    void refuseMisfit(const CsvProfile::Misfit& misfit) const;
    bool hasFlaw() const;
    void refuseFlaw() const;
    void refuseProblems() const;

    CsvCheckSettings _settings;
    std::shared_ptr<CsvProfile> _profile; ///< what is read on; null if nothing needs to be
    Cancellation* _cancellation = nullptr;
    std::atomic<bool> _stop = false;
    std::exception_ptr _failure;
    std::thread _thread;
};

} // namespace EmbeddedHV
