#include "components/temporal/training/Train.h"

#include <unordered_map>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/ContainerArchive.h"
#include "components/ContainerFile.h"
#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/Preparation.h"
#include "components/temporal/preparation/TsdpDocument.h"
#include "components/temporal/training/Training.h"
#include "components/temporal/training/TrainingSettings.h"
#include "duckdb/DuckSession.h"

namespace EmbeddedHV {
namespace {

constexpr std::uint64_t kMostPreparationBytes = std::uint64_t{512} << 20;
/// Of the step, for its progress.
constexpr double kReadingShare = 0.05;
/// Of what follows the reading; the rest is the model file.
constexpr double kTrainingShare = 0.9;

std::string onlyPath(const StepCall& call, const std::vector<ComponentContainer>& containers,
                     const std::string& what)
{
    if (containers.size() != 1)
        throw JobError(errors::kSettingType,
                       {.step = call.name,
                        .what = "there are " + std::to_string(containers.size()) + " " + what +
                                " containers where one is needed"});
    return containers.front().path;
}

Preparation readPreparation(const StepCall& call)
{
    const std::string path = onlyPath(call, inputContainers(call), "input");
    const ContainerArchive archive(path, call.name);
    return preparationOf(archive.neededMember(kTsdpMember, kMostPreparationBytes),
                         {call.name, path, kTsdpMember});
}

/// The series of the records in the order of their fields, with the names that the preparation
/// knows them by.
std::vector<ModelSeries> seriesOf(const StepCall& call, const Preparation& preparation)
{
    std::unordered_map<std::string, const PreparedSeries*> known;
    for (const PreparedSeries& series : preparation.series)
        known.emplace(series.id, &series);
    std::vector<ModelSeries> all;
    for (const CFField& field : call.input()->fields) {
        if (field.GetName() == kTimeIndexField)
            continue;
        const auto found = known.find(field.GetName());
        if (found == known.end())
            throw JobError(errors::kPreparationFile,
                           {.step = call.name,
                            .field = field.GetName(),
                            .what = "the preparation in the input container does not know the "
                                    "series \"" +
                                    field.GetName() + "\", which the records have"});
        all.push_back({found->second->id, found->second->name, false, false});
    }
    if (all.empty())
        throw JobError(errors::kTooFewPoints,
                       {.step = call.name, .what = "the records have no series"});
    return all;
}

class TrainingOutput : public Output
{
public:
    TrainingOutput(StepCall& call, SeriesReader reader, Preparation preparation,
                   std::vector<ModelSeries> series, TrainingOptions options)
        : _context(call.context), _component(call.name), _preparation(std::move(preparation)),
          _series(std::move(series)), _options(std::move(options)), _reader(std::move(reader)),
          _file(onlyPath(call, outputContainers(call), "output"), call.name)
    {
        // Until the file is complete, a later step of the job must not read an older file of its
        // name.
        _context.announce(_file.destination(), _component);
    }

    std::string target() const override { return "the model of " + _component; }
    std::string statement(const std::string& select) override { return select; }
    bool takesRecords() const override { return true; }
    void take(RecordBatch& batch) override { _reader.take(chunkOf(batch)); }
    double statementShare() const override { return kReadingShare; }

    void commit() override
    {
        const SeriesTable table = _reader.finish();
        if (table.values.rows() == 0)
            throw JobError(errors::kTooFewPoints,
                           {.step = _component, .what = "there are no records"});
        if (table.firstIndex != 0)
            throw JobError(errors::kBadRecord,
                           {.step = _component,
                            .record = 1,
                            .what = "the first point of time has the number " +
                                    std::to_string(table.firstIndex) + ", not 0"});
        const TrainingHooks hooks{_context.message, stopCheckOf(_context, _component),
                                  partOf(_context.progress, 0, kTrainingShare)};
        const TcmModel model = trainModel(table, std::move(_series), _options, hooks, _component);
        _file.write(modelMembers(model, std::move(_preparation.document),
                                 modelStatistics(_preparation.fields)));
        hooks.checkStop();
        // Before the file gets its name: nothing may fail after that.
        const std::string written = canonicalPath(_file.destination());
        _file.commit();
        _context.unwritten.erase(written);
    }

private:
    JobContext& _context;
    std::string _component;
    Preparation _preparation;
    std::vector<ModelSeries> _series;
    TrainingOptions _options;
    SeriesReader _reader;
    ContainerFile _file;
};

} // namespace

StepResult planTrain(StepCall& call)
{
    SeriesReader reader(call.input()->fields, call.name);
    Preparation preparation = readPreparation(call);
    std::vector<ModelSeries> series = seriesOf(call, preparation);
    TrainingOptions options =
        trainingOptions(call.settings(), SeriesLookup(preparation.nameFields, series, "the input"),
                        call.context.message);
    auto output = std::make_unique<TrainingOutput>(call, std::move(reader), std::move(preparation),
                                                   std::move(series), std::move(options));
    return {call.input(), std::move(output)};
}

} // namespace EmbeddedHV
