#include "steps/CsvCheck.h"

#include <algorithm>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/CsvFault.h"
#include "datafile/StartedThread.h"
#include "expression/FieldTypes.h"
#include "runtime/Reporter.h"

namespace EmbeddedHV {
namespace {

/// a + b, or the greatest number if that is larger.
std::uint64_t saturatedSum(std::uint64_t a, std::uint64_t b)
{
    return a > UINT64_MAX - b ? UINT64_MAX : a + b;
}

} // namespace

CsvCheck::CsvCheck(CsvCheckSettings settings) : _settings(std::move(settings))
{
    if (_settings.guess) {
        // A profile of all wanted records is complete, not a guess.
        if (!_settings.guess->complete() && _settings.guess->records() < _settings.mostRecords)
            _profile = _settings.guess;
    }
    // With an error threshold, the database skips values that do not convert and rounds others.
    else if (_settings.errorThreshold == 0)
        _profile = std::make_shared<CsvProfile>(_settings.path, _settings.hasHeader,
                                                storagesOf(_settings.fields));
}

CsvCheck::~CsvCheck()
{
    join(false);
}

void CsvCheck::readsOnly(const std::set<std::string>& fields)
{
    // Which records are skipped must not depend on what a statement reads.
    if (_settings.errorThreshold != 0)
        return;
    _columnsRead.emplace();
    for (const CFField& field : _settings.fields)
        _columnsRead->push_back(fields.contains(field.GetName()));
}

void CsvCheck::start(Cancellation& cancellation, const Progress&)
{
    _cancellation = &cancellation;
    // If a statement is started again, so is its check.
    _stop = false;
    if ((_profile && !_profile->complete()) || _settings.errorThreshold != 0)
        _thread =
            datafile::startedThread("checks the file " + _settings.path, [this] { readRest(); });
}

/// Whether the records so far confirm the types that were guessed from the head of the file.
bool CsvCheck::guessHolds() const
{
    for (std::size_t i = 0; i < _settings.fields.size(); ++i)
        if (_profile->storageOf(i) != _settings.fields[i].GetStorage())
            return false;
    return true;
}

/// Runs on its own thread while the statement reads the same file.
void CsvCheck::readRest()
{
    try {
        if (_settings.errorThreshold != 0)
            findFatalFlaw();
        if (!_profile || _profile->complete())
            return;
        if (_settings.guess)
            _profile->trust(_columnsRead);
        _profile->read(_settings.mostRecords, [this] {
            const bool wrong = _profile->misfit() || hasFlaw() || needsHigherLimits() ||
                               misleadsThreads() || (_settings.guess && !guessHolds());
            if (wrong)
                _cancellation->stopStatement(); // the result would be useless
            return !wrong && goOn();
        });
        // If the guess was wrong, guess again for the next plan.
        if (_settings.guess && !guessHolds() && !hasFlaw())
            guessAgain();
    } catch (...) {
        _failure = std::current_exception();
    }
}

/// The database skips bad records. It may read a record with a broken quote as a value, or skip the
/// records after it as well.
void CsvCheck::findFatalFlaw()
{
    const std::uint64_t mostSkipped = _settings.errorThreshold < 0
                                          ? UINT64_MAX
                                          : static_cast<std::uint64_t>(_settings.errorThreshold);
    CsvProfile profile(_settings.path, _settings.hasHeader);
    profile.trust(); // the types are not needed
    profile.read(saturatedSum(_settings.mostRecords, mostSkipped),
                 [&] { return !profile.fatalFlaw() && goOn(); });
    _fatalFlaw = profile.fatalFlaw();
    _hasLongRecord = profile.hasLongRecord();
}

/// Whether a record so far exceeds the limits with which the database reads.
bool CsvCheck::needsHigherLimits() const
{
    return _settings.longRecords && (_hasLongRecord || (_profile && _profile->hasLongRecord()));
}

/// Plans again with higher limits if the file has a record that needs them.
void CsvCheck::raiseLimits()
{
    if (!needsHigherLimits())
        return;
    // The profile has left values to a statement that did not read them all.
    if (_settings.guess && (!_settings.guess->complete() || _settings.guess->hasUnreadColumn()))
        guessAgain();
    _settings.longRecords->insert(_settings.path);
    throw Reread{};
}

/// Looks in the whole file for long records and for quotes.
void CsvCheck::scan()
{
    CsvProfile profile(_settings.path, _settings.hasHeader);
    profile.trust();
    profile.read(UINT64_MAX, [&] { return !profile.hasLongRecord() && goOn(); });
    _hasLongRecord = profile.hasLongRecord();
    _hasQuotes = profile.hasQuotes();
}

/// Whether several threads read the file, and may lose records.
bool CsvCheck::misleadsThreads() const
{
    return _settings.inOneThread && _profile && _profile->misleadsThreads();
}

/// Plans again with one thread that reads the file.
void CsvCheck::readInOneThread()
{
    // The profile has left values to a statement that may not have read them.
    if (_settings.guess && _settings.guess->trusting())
        guessAgain();
    _settings.inOneThread->insert(_settings.path);
    throw Reread{};
}

/// The same if the statement may have failed because of several threads. They can begin at wrong
/// places in a file with quotes.
void CsvCheck::avoidThreads()
{
    const auto hasQuotes = [](const auto& profile) { return profile && profile->hasQuotes(); };
    if (_settings.inOneThread && (_hasQuotes || hasQuotes(_profile) || hasQuotes(_settings.guess)))
        readInOneThread();
}

bool CsvCheck::goOn() const
{
    return !_stop && !(_cancellation && _cancellation->cancelled());
}

void CsvCheck::guessAgain()
{
    _settings.guess->readAnew(_settings.mostRecords, [this] { return goOn(); });
}

/// Waits for the thread. With `toTheEnd`, lets it finish; otherwise tells it to stop and ignores
/// what it found.
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
    throw JobError(errors::kBadRecord,
                   {.step = "read",
                    .file = _settings.path,
                    .inFile = {misfit.line},
                    .field = field.GetName(),
                    .what = "field \"" + field.GetName() + "\": \"" + misfit.text + "\" is not " +
                            typeWordOf(field.GetStorage())});
}

/// Whether one of the wanted records is unreadable. If bad records may be skipped, the database
/// finds them.
bool CsvCheck::hasFlaw() const
{
    return _settings.errorThreshold == 0 && _profile->flaw() &&
           _profile->flaw()->record <= _settings.mostRecords;
}

/// Rejects the file if a wanted record has a flaw. Scans the file again, encoding included, to
/// report the first flaw.
void CsvCheck::refuseFlaw() const
{
    if (_settings.errorThreshold != 0)
        return;
    const auto flaw = datafile::firstCsvFlaw(_settings.path, _settings.hasHeader,
                                             _settings.mostRecords, [this] { return goOn(); });
    if (flaw)
        throw datafile::faultOf(*flaw, _settings.path);
}

/// Rejects the file if a wanted record cannot be skipped. `skipped` is the number of bad records
/// before the last wanted one.
void CsvCheck::refuseFatalFlaw(std::uint64_t skipped) const
{
    if (!_fatalFlaw || _fatalFlaw->record > saturatedSum(_settings.mostRecords, skipped))
        return;
    const bool isOfRecord = !_fatalFlaw->isOfFile;
    throw JobError(
        errors::kFileUnreadable,
        {.step = "read",
         .file = _settings.path,
         .inFile = {_fatalFlaw->line, _fatalFlaw->column},
         .what =
             _fatalFlaw->text +
             (isOfRecord ? "; the record cannot be skipped, because its end is uncertain" : "")});
}

/// Reports the problems that were found, unreadable records first.
void CsvCheck::refuseProblems()
{
    if (misleadsThreads())
        readInOneThread();
    const auto& misfit = _profile->misfit();
    if (hasFlaw() && (!misfit || _profile->flaw()->line <= misfit->line))
        refuseFlaw();
    if (_settings.guess && !guessHolds())
        throw Reread{};
    if (misfit)
        refuseMisfit(*misfit);
}

void CsvCheck::finish(Session& session, Reporter& reporter)
{
    join(true);
    if (!_cancellation->cancelled())
        raiseLimits();
    if (_profile && !_cancellation->cancelled())
        refuseProblems();
    if (!_settings.rejects.empty())
        countRejects(session, reporter);
}

void CsvCheck::abandon(const StatementFault& fault)
{
    using Csv = StatementFault::Csv;
    const Csv csv = fault.csv(_settings.path);
    // The database may know the line, but it is not always the first bad one.
    if (csv == Csv::Record || csv == Csv::Form) {
        join(false);
        _stop = false;
        if (_settings.longRecords || _settings.inOneThread)
            scan();
        raiseLimits();
        refuseFlaw();
        if (_settings.errorThreshold != 0)
            findFatalFlaw();
        refuseFatalFlaw(UINT64_MAX);
    }
    // The database reads to the end of a block, so the bad record may be after the limit.
    if (_settings.readWhole && (csv == Csv::Record || csv == Csv::Value)) {
        join(false);
        _settings.readWhole->insert(_settings.path);
        throw Reread{};
    }
    const bool checks = _profile && _cancellation && !_cancellation->cancelled();
    const bool stopped = checks && _cancellation->stopping();
    // Either the check stopped the statement, or the database found the value first.
    const bool finds = stopped || (checks && csv == Csv::Value);
    join(finds);
    if (finds) {
        raiseLimits();
        // The check had left this conversion to the database, so it must guess again.
        if (_settings.guess && csv == Csv::Value && _profile->trusting())
            guessAgain();
        if (stopped || (_settings.guess && !guessHolds()))
            refuseProblems();
    }
    if (csv != Csv::Nothing)
        avoidThreads();
}

/// The number of bad records before the last record that is wanted.
std::size_t CsvCheck::countWithinLimit(const RejectedRecords& bad) const
{
    const std::size_t count = bad.count();
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
        if (bad.line(passed) <= scanner.line())
            ++passed;
        else
            ++good;
    }
    return passed;
}

void CsvCheck::refuseRecord(const RejectedRecords& bad, std::size_t record) const
{
    FaultParts parts = datafile::csvParts(_settings.path, bad.line(record), bad.message(record));
    if (_settings.errorThreshold == 0)
        throw JobError(errors::kBadRecord, std::move(parts), bad.message(record));
    parts.limit = _settings.errorThreshold;
    parts.what += "; more than " + std::to_string(_settings.errorThreshold) +
                  (_settings.errorThreshold == 1 ? " record" : " records") + " cannot be read";
    throw JobError(errors::kTooManyBadRecords, std::move(parts));
}

void CsvCheck::countRejects(Session& session, Reporter& reporter)
{
    refuseFatalFlaw(0);
    // A statement that needs no records, for example with a limit of 0, does not read the file.
    if (!session.hasRejects(_settings.rejects))
        return;
    const bool hasValues = session.hasRejectedValues(_settings.rejects);
    // The types depend on the whole file, including bad records.
    if (_settings.guess && hasValues) {
        guessAgain();
        _profile = _settings.guess;
        if (!guessHolds())
            throw Reread{};
    }
    const std::int64_t most =
        _settings.errorThreshold < 0
            ? -1
            : std::min<std::int64_t>(_settings.errorThreshold, INT64_MAX - 1) + 1;
    const std::unique_ptr<RejectedRecords> bad = session.rejectedRecords(_settings.rejects, most);
    const std::size_t count = countWithinLimit(*bad);
    refuseFatalFlaw(count);
    if (_settings.errorThreshold >= 0 &&
        count > static_cast<std::uint64_t>(_settings.errorThreshold))
        refuseRecord(*bad, count - 1);
    if (count > 0)
        reporter.message(
            errors::kRecordsSkipped,
            {.step = "read",
             .file = _settings.path,
             .what = std::to_string(count) +
                     (count == 1 ? " record was skipped, " : " records were skipped, ") +
                     "the first on line " + std::to_string(bad->line(0)) + ": " +
                     datafile::csvReason(bad->message(0))});
}

} // namespace EmbeddedHV
