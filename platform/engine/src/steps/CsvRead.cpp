#include "steps/CsvRead.h"

#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "expression/FieldTypes.h"
#include "steps/CsvCheck.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {
namespace {

/// Usually enough records to know the types, and quick to read.
constexpr std::uint64_t kSampleRecords = 20000;

/// Determines the fields of a CSV file.
class CsvPlan
{
public:
    CsvPlan(JobContext& context, const CsvReadSettings& settings)
        : _context(context), _settings(settings),
          _known(context.profiles[{settings.path, settings.hasHeader}])
    {
        if (!_known)
            _known = std::make_shared<CsvProfile>(settings.path, settings.hasHeader);
        // A second reader of the file gets a complete profile, because two threads must not read
        // one profile.
        else if (!settings.dataModel)
            readProfile(UINT64_MAX);
    }

    const std::shared_ptr<CsvProfile>& profile() const { return _known; }
    Fields guessedFields();
    Fields modelledFields();
    bool mayHaveLongRecords() const;
    bool mustReadInOneThread() const;
    /// Rejects the file if the profile has found an unreadable record.
    void refuseFlaw() const;

private:
    void readProfile(std::uint64_t records)
    {
        const auto goOn = [this] { return !_context.stopping(); };
        // An earlier statement has not read all columns.
        if (_known->hasUnreadColumn())
            _known->readAnew(records, goOn);
        else if (!_known->complete())
            _known->read(records, goOn);
    }
    Fields fieldsByPlace() const;
    [[noreturn]] void refuse(const std::string& problem) const
    {
        throw JobError(errors::kDataModelMismatch,
                       {.step = "read", .file = _settings.path, .what = problem});
    }

    JobContext& _context;
    const CsvReadSettings& _settings;
    std::shared_ptr<CsvProfile>& _known;
};

Fields CsvPlan::guessedFields()
{
    // A guess may fail, and the job is then planned again. That is impossible with row iterators,
    // whose rows can be read only once, and if the job is only planned.
    const bool mayGuess = _context.iterators.empty() && !_context.plansOnly;
    const std::uint64_t sample = mayGuess ? kSampleRecords : UINT64_MAX;
    readProfile(std::min(sample, _settings.mostRecords));
    Fields fields;
    for (std::size_t i = 0; i < _known->names().size(); ++i)
        fields.push_back(plainField(_known->names()[i], _known->storageOf(i)));
    return fields;
}

Fields CsvPlan::fieldsByPlace() const
{
    const std::size_t count = _known->names().size();
    if (_settings.dataModel->size() != count)
        refuse("the file has " + std::to_string(count) + " fields, the data model " +
               std::to_string(_settings.dataModel->size()));
    return *_settings.dataModel;
}

/// The fields of the file in its order, with the types of the data model. Fields are matched by
/// name if the file has names, else by position.
Fields CsvPlan::modelledFields()
{
    if (!_settings.hasHeader)
        return fieldsByPlace();
    const std::vector<std::string>& names = _known->names();
    const Fields& model = *_settings.dataModel;
    const FieldIndex known(model);
    const bool allKnown = std::all_of(names.begin(), names.end(), [&](const std::string& name) {
        return known.place(name).has_value();
    });
    if (!allKnown)
        readProfile(UINT64_MAX);
    Fields fields;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto place = known.place(names[i]);
        fields.push_back(place ? model[*place] : plainField(names[i], _known->storageOf(i)));
    }
    const FieldIndex read(fields);
    for (const CFField& field : model)
        if (!read.place(field.GetName()))
            refuse("the data model has a field \"" + field.GetName() + "\", which the file lacks" +
                   base::suggestion(field.GetName(), {names.begin(), names.end()}));
    return fields;
}

/// Whether the database needs higher limits. They cost memory. If a long record is found too late,
/// the job is planned again, unless rows can be read only once. The check does not look beyond a
/// limited number of records, but the database may.
bool CsvPlan::mayHaveLongRecords() const
{
    const bool isChecked = _context.iterators.empty() && _settings.mostRecords == UINT64_MAX;
    return !(isChecked || _known->complete()) || _known->hasLongRecord() ||
           _context.longRecords.contains(_settings.path);
}

/// Several threads usually read a file with quotes well. If they fail, the job is planned again,
/// unless rows can be read only once.
bool CsvPlan::mustReadInOneThread() const
{
    const bool canTryAgain = _context.iterators.empty();
    return _known->misleadsThreads() || _context.inOneThread.contains(_settings.path) ||
           (!canTryAgain && (!_known->complete() || _known->hasQuotes()));
}

void CsvPlan::refuseFlaw() const
{
    const auto& flaw = _known->flaw();
    if (!flaw || flaw->record > _settings.mostRecords)
        return;
    // The profile does not check the encoding, and a record that is not UTF-8 may come earlier.
    const auto first =
        datafile::firstCsvFlaw(_settings.path, _settings.hasHeader, _settings.mostRecords,
                               [this] { return !_context.stopping(); });
    if (first)
        throw datafile::faultOf(*first, _settings.path);
}

/// A condition that is always true and uses every column whose values may not convert. Which
/// records are skipped must not depend on the columns that a statement uses.
std::string allConverted(const Dialect& dialect, const Fields& fields)
{
    std::string columns;
    for (const CFField& field : fields)
        if (field.GetStorage() != CFField::String)
            columns += (columns.empty() ? "" : ", ") + dialect.name(field.GetName());
    return columns.empty() ? "" : " WHERE " + dialect.readsAll(columns);
}

std::string selectOf(const Dialect& dialect, const CsvReadSettings& settings,
                     const CsvSource& source)
{
    const Fields& fields = source.columns;
    std::string columns = "*";
    if (anyUserMissing(dialect, fields)) {
        std::vector<std::string> names;
        for (const CFField& field : fields)
            names.push_back(dialect.name(field.GetName()));
        columns = selectList(dialect, fields, names);
    }
    std::string sql = "SELECT " + columns + " FROM " + dialect.csvTable(source);
    if (settings.dataModel && settings.errorThreshold != 0)
        sql += allConverted(dialect, fields);
    return sql;
}

} // namespace

NodePtr planCsv(JobContext& context, const CsvReadSettings& settings)
{
    CsvPlan plan(context, settings);
    auto node = std::make_shared<Node>();
    node->fields = settings.dataModel ? plan.modelledFields() : plan.guessedFields();

    CsvCheckSettings check;
    check.path = settings.path;
    check.hasHeader = settings.hasHeader;
    check.fields = node->fields;
    check.errorThreshold = settings.errorThreshold;
    check.mostRecords = settings.mostRecords;
    // The database ends a limited read when it has enough records, and then loses the list of
    // skipped records. If that list is needed, the whole file is read into a table. It is needed to
    // count bad records and to distinguish those after the limit from those before it. With row
    // iterators there is no second try.
    const bool whole = settings.mostRecords != UINT64_MAX &&
                       (settings.errorThreshold != 0 || !context.iterators.empty() ||
                        context.readWhole.contains(settings.path));
    node->shared = whole;
    if (settings.errorThreshold != 0 || whole) {
        check.rejects = context.newTable("hv_rejects_");
        context.tables.push_back(context.dialect.rejectScansOf(check.rejects));
        node->readsOnce = true; // The database has the list of bad records already.
    } else if (settings.mostRecords != UINT64_MAX) {
        check.readWhole = &context.readWhole;
    }
    if (!settings.dataModel)
        check.guess = plan.profile();
    if (settings.errorThreshold == 0)
        plan.refuseFlaw();
    const bool hasLongRecords = plan.mayHaveLongRecords();
    if (!hasLongRecords)
        check.longRecords = &context.longRecords;
    const bool inOneThread = plan.mustReadInOneThread();
    if (!inOneThread && check.rejects.empty() && context.iterators.empty())
        check.inOneThread = &context.inOneThread;
    node->check = std::make_shared<CsvCheck>(check);

    const CsvSource source{settings.path,
                           settings.hasHeader,
                           node->fields,
                           {check.rejects, hasLongRecords, inOneThread}};
    node->select = [sql = selectOf(context.dialect, settings, source)](
                       const std::vector<std::string>&) { return sql; };
    return node;
}

} // namespace EmbeddedHV
