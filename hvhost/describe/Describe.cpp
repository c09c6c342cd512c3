#include "hvhost/describe/Describe.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "data/HVSimpleContainer.h"
#include "descriptive/HVDescriptive.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/describe/Description.h"
#include "hvhost/describe/DescriptionOutput.h"
#include "hvhost/describe/DescriptionShown.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/show/TextTable.h"
#include "runner/HVRunner.h"
#include "support/ZipReader.h"

namespace {

bool isIn(const std::vector<int>& columns, int column)
{
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

/// The variables that the user names, or all except the weight and the split.
std::vector<int> describedColumns(const Dataset& dataset, const std::vector<std::string>& names)
{
    std::vector<int> columns;
    for (const std::string& name : names) {
        const int column = dataset.columnOf(name, "");
        if (column == dataset.weight())
            throw CommandFault(ExitStatus::Usage,
                               name + ": this variable weighs the cases, and is not described");
        if (isIn(columns, column))
            throw CommandFault(ExitStatus::Usage, name + ": it is named twice");
        columns.push_back(column);
    }
    if (!names.empty())
        return columns;
    for (int column = 0; column < dataset.source().ColumnCount(); ++column)
        if (column != dataset.weight() && !isIn(dataset.split(), column))
            columns.push_back(column);
    if (columns.empty())
        throw CommandFault(ExitStatus::Usage, "there is no variable to describe except those that "
                                              "weigh the cases or split the file");
    return columns;
}

/// Date variables, each with its own interval, or numbers that form a date together.
struct DateColumns
{
    std::vector<int> columns;
    bool areDates = true;
};

DateColumns dateColumns(const Dataset& dataset, const std::vector<std::string>& names)
{
    DateColumns dates;
    for (const std::string& name : names) {
        const std::string origin = "--date " + name;
        const int column = dataset.columnOf(name, origin);
        const CFField::StorageType storage = dataset.storageOf(column);
        if (storage == CFField::String)
            throw TextFieldFault(dataset.nameOf(column),
                                 origin + ": this is a text, neither a date nor a number");
        const bool isDate = storage != CFField::Real && storage != CFField::Integer;
        if (!dates.columns.empty() && isDate != dates.areDates)
            throw CommandFault(ExitStatus::Usage,
                               origin + ": dates and numbers do not go together");
        if (isIn(dates.columns, column))
            throw CommandFault(ExitStatus::Usage, origin + ": it is named twice");
        dates.areDates = isDate;
        dates.columns.push_back(column);
    }
    return dates;
}

std::vector<std::string> namesOf(const Dataset& dataset, const std::vector<int>& columns)
{
    std::vector<std::string> names;
    names.reserve(columns.size());
    for (const int column : columns)
        names.push_back(dataset.nameOf(column));
    return names;
}

std::vector<int> together(std::vector<int> columns, const std::vector<int>& others)
{
    for (const int column : others)
        if (!isIn(columns, column))
            columns.push_back(column);
    return columns;
}

/// The user's request, with the columns of the dataset. Borrows both.
class Question
{
public:
    Question(const Dataset& dataset, const DescribeOptions& options)
        : _dataset(dataset), _options(options),
          _columns(describedColumns(dataset, options.variables)),
          _dates(dateColumns(dataset, options.dates))
    {
        if (!options.analyses.target.empty())
            setTarget(options.analyses.target);
    }

    /// All variables that the request needs.
    std::vector<int> columns() const { return together(_columns, _dates.columns); }

    Description description() const
    {
        Description description;
        description.file = _options.input.path;
        if (_dataset.weight() >= 0)
            description.weight = _dataset.nameOf(_dataset.weight());
        description.split = namesOf(_dataset, _dataset.split());
        description.mostDistinct = _options.mostDistinct;
        description.percents = _options.analyses.percents();
        description.hasOutliers = _options.analyses.wantsOutliers();
        description.hasPairs = _options.analyses.wantsPairs();
        description.hasMissingPatterns = _options.analyses.missingPatterns;
        return description;
    }

    /// Runs one job for these groups. Returns false if it failed.
    bool ask(HVDescriptive& descriptive, const CaseGroups& groups, CFMetaData& model,
             std::string& intervals) const
    {
        const std::vector<std::string> fields = namesOf(_dataset, _columns);
        applyAnalyses(_options.analyses, _target, descriptive);
        if (const std::string number = groups.numberField(); !number.empty()) {
            descriptive.SetDESetting("groupField", number);
            descriptive.SetDESetting("groupCount", std::to_string(groups.groups().size()));
        }
        if (_dates.columns.empty())
            return descriptive.BuildMetaData(&fields, model, _options.mostDistinct, true);
        // Both in one job, whose settings must name the weight.
        if (_dataset.weight() >= 0)
            descriptive.SetDESetting("frequencyWeightField", _dataset.nameOf(_dataset.weight()));
        const std::vector<std::string> dates = namesOf(_dataset, _dates.columns);
        std::string text;
        if (!descriptive.UpdateDateModel(&fields, &dates, _dates.areDates, intervals, text,
                                         _options.mostDistinct))
            return false;
        model = CFMetaData(text);
        return true;
    }

private:
    /// The target is described too.
    void setTarget(const std::string& name)
    {
        const std::string origin = "--target " + name;
        const int column = _dataset.columnOf(name, origin);
        if (column == _dataset.weight())
            throw CommandFault(ExitStatus::Usage,
                               origin + ": this variable weighs the cases, and is not described");
        _columns = together(_columns, {column});
        _target = _dataset.nameOf(column);
    }

    const Dataset& _dataset;
    const DescribeOptions& _options;
    std::vector<int> _columns;
    std::string _target; ///< empty for none
    DateColumns _dates;
};

/// Describes the groups, some in each job.
class Describing
{
public:
    Describing(const Question& question, HostSession& session, JobOrigin origin,
               const InterruptWatch& watch)
        : _question(question), _session(session), _origin(std::move(origin)), _watch(watch)
    {
    }

    /// Describes the groups that share `cases`. If `results` is null, the job writes no result
    /// documents.
    std::vector<GroupDescription> describe(const CaseGroups& groups, HVRawDataIterator& cases,
                                           HVSimpleContainer* results)
    {
        _watch.check();
        const Answer answer = ask(groups, cases, results);
        const InterruptWatch::Abandonable reading(_watch);
        std::vector<GroupDescription> described;
        if (groups.numberField().empty()) {
            described.push_back(readDescription(answer.model, answer.statXml, answer.intervals));
            described.front().leftOut = leftOut(described.front(), cases, results != nullptr);
        } else {
            described = readDescriptions(answer.statXml, answer.intervals);
            if (described.size() != groups.groups().size())
                throw CommandFault(ExitStatus::JobFailed, "the job left no result");
        }
        for (std::size_t i = 0; i < described.size(); ++i)
            complete(described[i], groups.groups()[i], !groups.numberField().empty());
        return described;
    }

private:
    /// The documents of a job.
    struct Answer
    {
        CFMetaData model;
        std::string statXml;
        std::string intervals;
    };

    Answer ask(const CaseGroups& groups, HVRawDataIterator& cases, HVSimpleContainer* results)
    {
        Answer answer;
        _origin.groups = namesOf(groups);
        _session.showPart(std::exchange(_served, groups.partServed()), groups.partServed());
        _session.perform(
            [&] {
                HVDescriptive descriptive(_session.runner(), &cases);
                if (results)
                    descriptive.AddOutputContainer(*results);
                const bool done =
                    _question.ask(descriptive, groups, answer.model, answer.intervals);
                _session.log("job: " + descriptive.GetHVLJob());
                answer.statXml = descriptive.GetStatXML();
                return done;
            },
            _origin);
        return answer;
    }

    /// The engine also leaves out infinite weights. A result document reports them itself.
    static int leftOut(const GroupDescription& group, const HVRawDataIterator& cases,
                       bool hasResults)
    {
        const auto records = hasResults ? std::nullopt : factOf(group.facts, "records");
        return records ? cases.GetNCases() - std::stoi(*records) : cases.GetNInvalidCases();
    }

    static void complete(GroupDescription& described, const CaseGroup& group, bool isOneOfMany)
    {
        described.key = group.key;
        if (!isOneOfMany)
            return;
        const int records = std::stoi(described.facts.at("records"));
        described.leftOut = static_cast<int>(group.cases) - records - described.withoutFiniteWeight;
    }

    /// The names of the groups, for messages.
    static std::vector<std::string> namesOf(const CaseGroups& groups)
    {
        std::vector<std::string> names;
        for (const CaseGroup& group : groups.groups())
            if (!group.key.empty())
                names.push_back(nameOf(group.key));
        return names;
    }

    const Question& _question;
    HostSession& _session;
    JobOrigin _origin;
    const InterruptWatch& _watch;
    double _served = 0; ///< the part of the cases that the previous jobs got
};

constexpr const char* kResults = "Results";

/// The result documents of the groups in a container, in their order.
class ResultWalk
{
public:
    explicit ResultWalk(const HVSimpleContainer& container) : _reader(container.getGenericPath()) {}

    std::string next()
    {
        std::string name;
        bool isDirectory = false;
        const bool isFound = std::exchange(_isFirst, false) ? _reader.GetFirst(name, isDirectory)
                                                            : _reader.GetNext(name, isDirectory);
        std::string text;
        if (!isFound || !_reader.ExportString(text))
            throw CommandFault(ExitStatus::JobFailed, "the job left no result");
        return text;
    }

private:
    ZipReader _reader;
    bool _isFirst = true;
};

/// A stopped runner composes the job but does not run it.
std::string composeJob(const Question& question, const CaseGroups& groups, HVRawDataIterator& cases,
                       bool withResults)
{
    HVRunner stopped;
    stopped.cancelExecution();
    HVSimpleContainer results(kResults, "");
    HVDescriptive descriptive(stopped, &cases);
    if (withResults)
        descriptive.AddOutputContainer(results);
    CFMetaData model;
    std::string intervals;
    question.ask(descriptive, groups, model, intervals);
    return descriptive.GetHVLJob();
}

/// For programs: all groups in one table or document.
void showFigures(Describing& describing, const Description& description, CaseGroups& groups,
                 const std::string& form, const ShownResult& result)
{
    const std::unique_ptr<DescriptionFigures> figures = makeFigures(form, description);
    while (HVRawDataIterator* const cases = groups.next())
        for (const GroupDescription& group : describing.describe(groups, *cases, nullptr))
            figures->add(group);
    result.deliver([&](std::ostream& out) { figures->print(out); });
}

/// For people: the engine's result document for each group.
void showOutput(Describing& describing, const Description& description, CaseGroups& groups,
                const OutputLook& look, const ShownResult& result, HostSession& session)
{
    DescriptionOutput output(session, description, look);
    while (HVRawDataIterator* const cases = groups.next()) {
        HVSimpleContainer results(kResults, "");
        const std::vector<GroupDescription> described =
            describing.describe(groups, *cases, &results);
        ResultWalk documents(results);
        for (std::size_t i = 0; i < described.size(); ++i) {
            if (!groups.groups()[i].key.empty())
                groups.show(groups.groups()[i]);
            output.add(described[i], documents.next(), groups.procedureData());
            session.countShownWarnings();
        }
    }
    output.compareGroups();
    session.countShownWarnings();
    result.deliver([&](std::ostream& out) { output.write(out); });
}

/// Warns of fields that pairs treat as categories because of a single text.
void warnOfTexts(const InputFile& input, const std::vector<std::string>& names,
                 HostSession& session)
{
    for (const datafile::TextReason& reason : input.textReasons())
        if (std::ranges::find(names, reason.name) != names.end() &&
            reason.cause != datafile::TextReason::Cause::Words) {
            const std::string hint = reasonHint(reason, input);
            session.warn(reasonText(reason) + ", so its values are compared as categories" +
                         (hint.empty() ? "" : "; " + hint));
        }
}

bool isForPrograms(const std::string& form)
{
    return form == "csv" || form == "json";
}

} // namespace

void describe(const DescribeOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const ShownOptions& shown = options.shown;
    const ShownResult result(shown.output, shown.force, watch);
    const std::string form = formOf(shown.format, shown.output, {"csv", "json", "html"});
    if (form == "csv" && options.analyses.missingPatterns && options.analyses.wantsPairs())
        throw CommandFault(ExitStatus::Usage,
                           "--missing-patterns: csv has room for patterns or for pairs",
                           "--format json shows both");
    const OutputLook look{form, result.isFile(), textForm(shown.text, form, result.isFile())};
    InputFile input(options.input, FileOptions::Offered, watch);
    Dataset& dataset = *input.dataset();
    if (!options.by.empty())
        dataset.setSplit(options.by);
    const Question question = explainingTexts(input, [&] { return Question(dataset, options); });
    CaseGroups groups(dataset, question.columns(), watch);
    // Not with the data of the groups: a job may describe several.
    HostSession session("describe", common, watch);
    session.introduce(input);
    if (options.analyses.wantsPairs())
        warnOfTexts(input, namesOf(dataset, question.columns()), session);
    if (options.printJob) {
        if (HVRawDataIterator* const cases = groups.next())
            std::cout << composeJob(question, groups, *cases, !isForPrograms(form));
        return;
    }
    const Description description = question.description();
    JobOrigin origin = input.origin();
    origin.settings = analysisSettings(options.analyses);
    Describing describing(question, session, std::move(origin), watch);
    if (isForPrograms(form))
        showFigures(describing, description, groups, form, result);
    else
        showOutput(describing, description, groups, look, result, session);
    session.finish();
}
