#include "steps/CsvCheck.h"

#include <algorithm>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/CsvFault.h"
#include "datafile/SqlQuoting.h"
#include "datafile/StartedThread.h"
#include "expression/FieldTypes.h"
#include "runtime/QueryFaults.h"
#include "runtime/Reporter.h"

namespace EmbeddedHV {
CsvCheck::CsvCheck(CsvCheckSettings settings) : _settings(std::move(settings))
{
    if (_settings.guess) {
        // A profile of all records that are wanted is no longer a guess.
        if (!_settings.guess->complete() && _settings.guess->records() < _settings.mostRecords)
            _profile = _settings.guess;
    }
    // With a threshold the database skips what it cannot convert, and rounds the rest.
    else if (_settings.errorThreshold == 0)
        _profile = std::make_shared<CsvProfile>(_settings.path, _settings.hasHeader,
                                                storagesOf(_settings.fields));
}

CsvCheck::~CsvCheck()
{
    join(false);
}

void CsvCheck::start(Cancellation& cancellation)
{
    _cancellation = &cancellation;
    // A statement that starts over starts its check over.
    _stop = false;
    if (_profile && !_profile->complete())
        _thread =
            datafile::startedThread("checks the file " + _settings.path, [this] { readRest(); });
}

/// Whether the rest of the file so far leaves each column what its beginning made of it.
bool CsvCheck::guessHolds() const
{
    for (std::size_t i = 0; i < _settings.fields.size(); ++i)
        if (_profile->storageOf(i) != _settings.fields[i].GetStorage())
            return false;
    return true;
}

/// On a thread of its own, beside the statement that reads the same file.
void CsvCheck::readRest()
{
    try {
        if (_settings.guess)
            _profile->trust();
        _profile->read(_settings.mostRecords, [this] {
            const bool wrong =
                _profile->misfit() || hasFlaw() || (_settings.guess && !guessHolds());
            if (wrong)
                _cancellation->stopStatement(); // no use in running on
            return !wrong && goOn();
        });
        // A guess that failed is made anew, since the next plan needs it.
        if (_settings.guess && !guessHolds() && !hasFlaw())
            guessAnew();
    } catch (...) {
        _failure = std::current_exception();
    }
}

bool CsvCheck::goOn() const
{
    return !_stop && !(_cancellation && _cancellation->cancelled());
}

void CsvCheck::guessAnew()
{
    _settings.guess->readAnew(_settings.mostRecords, [this] { return goOn(); });
}

/// Waits for the thread. Without `toTheEnd` what it finds is of no interest any more.
void CsvCheck::join(bool toTheEnd)
{
    if (!toTheEnd)
        _stop = true;
    if (_thread.joinable())
        _thread.join();
    if (toTheEnd && _failure)
        std::rethrow_exception(std::exchange(_failure, nullptr));
}

void CsvCheck::refuseMisfit(const CsvProfile::Misfit& misfit) const
{
    const CFField& field = _settings.fields[misfit.column];
    throw JobError(errors::kBadRecord, "read: " + _settings.path + ":" +
                                           std::to_string(misfit.line) + ": field \"" +
                                           field.GetName() + "\": \"" + misfit.text + "\" is not " +
                                           typeWordOf(field.GetStorage()));
}

/// Whether a record among those that are wanted cannot be read. Where bad records may be skipped,
/// the database finds them.
bool CsvCheck::hasFlaw() const
{
    return _settings.errorThreshold == 0 && _profile->flaw() &&
           _profile->flaw()->record <= _settings.mostRecords;
}

/// Refuses the file for the first flaw among the records that are wanted. A further look at the
/// file finds the first one, encoding included, whichever showed first.
void CsvCheck::refuseFlaw() const
{
    if (_settings.errorThreshold != 0)
        return;
    const auto flaw = datafile::firstCsvFlaw(_settings.path, _settings.hasHeader,
                                             _settings.mostRecords, [this] { return goOn(); });
    if (flaw)
        throw datafile::faultOf(*flaw, _settings.path);
}

/// What the check has found, first the records that cannot be read at all.
void CsvCheck::refuseProblems() const
{
    const auto& misfit = _profile->misfit();
    if (hasFlaw() && (!misfit || _profile->flaw()->line <= misfit->line))
        refuseFlaw();
    if (_settings.guess && !guessHolds())
        throw Reread{};
    if (misfit)
        refuseMisfit(*misfit);
}

void CsvCheck::finish(duck::Connection& connection, Reporter& reporter)
{
    join(true);
    if (_profile && !_cancellation->cancelled())
        refuseProblems();
    if (!_settings.rejects.empty())
        countRejects(connection, reporter);
}

void CsvCheck::abandon(const std::string& databaseMessage)
{
    // The database knows the line at best, and not always the first one.
    if (isCsvFormFault(databaseMessage, _settings.path)) {
        join(false);
        _stop = false;
        refuseFlaw();
    }
    // The database reads on to the end of a block: the bad record may stand behind the limit.
    if (_settings.readWhole && isCsvFault(databaseMessage, _settings.path)) {
        join(false);
        _settings.readWhole->insert(_settings.path);
        throw Reread{};
    }
    const bool checks = _profile && _cancellation && !_cancellation->cancelled();
    const bool stopped = checks && _cancellation->stopping();
    const bool conversion = checks && isCsvConversionFault(databaseMessage, _settings.path);
    // Either the check stopped the statement, or the database met the value first.
    if (!stopped && !conversion) {
        join(false);
        return;
    }
    join(true);
    // What the database refused was left to it.
    if (_settings.guess && conversion && _profile->trusting())
        guessAnew();
    if (stopped || (_settings.guess && !guessHolds()))
        refuseProblems();
}

/// How many of the bad records stand before the last record that is asked for.
std::size_t CsvCheck::countWithinLimit(duck::Result& bad) const
{
    const std::size_t count = bad.rows();
    if (_settings.mostRecords == UINT64_MAX || count == 0)
        return count;
    CsvScanner scanner(_settings.path);
    std::vector<CsvField> fields;
    if (_settings.hasHeader)
        scanner.next(fields);
    if (_settings.fields.size() == 1)
        scanner.takeBlankLines();
    std::size_t passed = 0;
    for (std::uint64_t good = 0;
         good < _settings.mostRecords && passed < count && scanner.next(fields);) {
        if (static_cast<std::uint64_t>(bad.integer(0, passed)) <= scanner.line())
            ++passed;
        else
            ++good;
    }
    return passed;
}

void CsvCheck::refuseRecord(duck::Result& bad, std::size_t record) const
{
    const std::string text = "read: " + _settings.path + ":" + bad.text(0, record) + ": " +
                             datafile::csvReason(bad.text(1, record));
    if (_settings.errorThreshold == 0)
        throw JobError(errors::kBadRecord, text, bad.text(1, record));
    throw JobError(errors::kTooManyBadRecords,
                   text + "; more than " + std::to_string(_settings.errorThreshold) +
                       (_settings.errorThreshold == 1 ? " record" : " records") +
                       " cannot be read");
}

/// Whether the database has kept a list of bad records: a statement that needs no record, as one
/// with a limit of 0, leaves the file unread.
bool CsvCheck::hasRejects(duck::Connection& connection) const
{
    return connection
               .query("SELECT count(*) FROM duckdb_tables() WHERE temporary AND table_name = " +
                      quotedLiteral(_settings.rejects))
               .integer(0, 0) > 0;
}

void CsvCheck::countRejects(duck::Connection& connection, Reporter& reporter)
{
    if (!hasRejects(connection))
        return;
    const std::string table = quotedIdentifier(_settings.rejects);
    duck::Result conversions = connection.query(
        "SELECT count(*) FROM " + table + " WHERE error_message LIKE 'Error when converting%'");
    // The whole file decides on types, bad records or not.
    if (_settings.guess && conversions.integer(0, 0) > 0) {
        guessAnew();
        _profile = _settings.guess;
        if (!guessHolds())
            throw Reread{};
    }
    duck::Result bad = connection.query(
        "SELECT line, min(error_message) FROM " + table + " GROUP BY line ORDER BY line" +
        (_settings.errorThreshold < 0
             ? std::string()
             : " LIMIT " +
                   std::to_string(std::min<std::int64_t>(_settings.errorThreshold, INT64_MAX - 1) +
                                  1)));
    const std::size_t count = countWithinLimit(bad);
    if (_settings.errorThreshold >= 0 &&
        count > static_cast<std::uint64_t>(_settings.errorThreshold))
        refuseRecord(bad, count - 1);
    if (count > 0)
        reporter.message(errors::kRecordsSkipped,
                         "read: " + _settings.path + ": " + std::to_string(count) +
                             (count == 1 ? " record was skipped, " : " records were skipped, ") +
                             "the first on line " + bad.text(0, 0) + ": " +
                             datafile::csvReason(bad.text(1, 0)));
}

} // namespace EmbeddedHV
