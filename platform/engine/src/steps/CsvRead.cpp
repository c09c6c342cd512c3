#include "steps/CsvRead.h"

#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/FileTables.h"
#include "datafile/SqlQuoting.h"
#include "expression/FieldTypes.h"
#include "expression/NearestName.h"
#include "steps/CsvCheck.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {
namespace {

/// Enough of a file to know its types in most cases, little enough to read at once.
constexpr std::uint64_t kSampleRecords = 20000;

/// Finds the fields of one CSV file.
class CsvPlan
{
public:
    CsvPlan(JobContext& context, const CsvReadSettings& settings)
        : _context(context), _settings(settings),
          _known(context.profiles[{settings.path, settings.hasHeader}])
    {
        if (!_known)
            _known = std::make_shared<CsvProfile>(settings.path, settings.hasHeader);
        // A second reader of the file finds it read to the end: two threads on one profile will not
        // do.
        else if (!settings.dataModel)
            readProfile(UINT64_MAX);
    }

    const std::shared_ptr<CsvProfile>& profile() const { return _known; }
    Fields guessedFields();
    Fields modelledFields();
    /// Refuses a file that the profile shows to have a record that cannot be read.
    void refuseFlaw() const;

private:
    void readProfile(std::uint64_t records)
    {
        if (!_known->complete())
            _known->read(records, [this] { return !_context.stopping(); });
    }
    Fields fieldsByPlace() const;
    [[noreturn]] void refuse(const std::string& problem) const
    {
        throw JobError(errors::kDataModelMismatch, "read: " + _settings.path + ": " + problem);
    }

    JobContext& _context;
    const CsvReadSettings& _settings;
    std::shared_ptr<CsvProfile>& _known;
};

Fields CsvPlan::guessedFields()
{
    // Rows of an iterator come once: a job that has any cannot be planned anew when a guess fails.
    // Nor is there a run to show the failure where only the plan is made.
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

/// The fields of the file in its order, typed by the data model. Names bind the two where the file
/// has names, places where it has none.
Fields CsvPlan::modelledFields()
{
    if (!_settings.hasHeader)
        return fieldsByPlace();
    const std::vector<std::string>& names = _known->names();
    const Fields& model = *_settings.dataModel;
    const bool allKnown = std::all_of(names.begin(), names.end(), [&](const std::string& name) {
        return findField(model, name) != nullptr;
    });
    if (!allKnown)
        readProfile(UINT64_MAX);
    Fields fields;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const CFField* known = findField(model, names[i]);
        fields.push_back(known ? *known : plainField(names[i], _known->storageOf(i)));
    }
    for (const CFField& field : model)
        if (!findField(fields, field.GetName()))
            refuse("the data model has a field \"" + field.GetName() + "\", which the file lacks" +
                   suggestion(field.GetName(), {names.begin(), names.end()}));
    return fields;
}

void CsvPlan::refuseFlaw() const
{
    const auto& flaw = _known->flaw();
    if (!flaw || flaw->record > _settings.mostRecords)
        return;
    // The profile does not look at the encoding; a record that is not UTF-8 may come first.
    const auto first =
        datafile::firstCsvFlaw(_settings.path, _settings.hasHeader, _settings.mostRecords,
                               [this] { return !_context.stopping(); });
    if (first)
        throw datafile::faultOf(*first, _settings.path);
}

/// A condition that is always true and looks at every value that may not convert. The database
/// leaves columns alone that a statement does not use, and which records are skipped must not hang
/// on that.
std::string allConverted(const Fields& fields)
{
    std::string columns;
    for (const CFField& field : fields)
        if (field.GetStorage() != CFField::String)
            columns += (columns.empty() ? "" : ", ") + quotedIdentifier(field.GetName());
    return columns.empty() ? "" : " WHERE hash(" + columns + ") IS NOT NULL";
}

std::string selectOf(const CsvReadSettings& settings, const Fields& fields,
                     const std::string& rejects)
{
    std::string columns = "*";
    if (anyUserMissing(fields)) {
        std::vector<std::string> names;
        for (const CFField& field : fields)
            names.push_back(quotedIdentifier(field.GetName()));
        columns = selectList(fields, names);
    }
    std::string sql = "SELECT " + columns + " FROM " +
                      csvTable(settings.path, settings.hasHeader, fields, rejects);
    if (settings.dataModel && settings.errorThreshold != 0)
        sql += allConverted(fields);
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
    // The database ends a limited read when it has enough, and then forgets the list of what it has
    // skipped. The whole file goes into a table where that list is needed: to count, or to tell bad
    // records behind the limit from those before it. The rows of an iterator allow no second try.
    const bool whole = settings.mostRecords != UINT64_MAX &&
                       (settings.errorThreshold != 0 || !context.iterators.empty() ||
                        context.readWhole.contains(settings.path));
    node->shared = whole;
    if (settings.errorThreshold != 0 || whole) {
        check.rejects = context.newTable("hv_rejects_");
        context.tables.push_back(rejectScansOf(check.rejects));
    } else if (settings.mostRecords != UINT64_MAX) {
        check.readWhole = &context.readWhole;
    }
    if (!settings.dataModel)
        check.guess = plan.profile();
    if (settings.errorThreshold == 0)
        plan.refuseFlaw();
    node->check = std::make_shared<CsvCheck>(check);

    node->select = [sql = selectOf(settings, node->fields, check.rejects)](
                       const std::vector<std::string>&) { return sql; };
    return node;
}

} // namespace EmbeddedHV
