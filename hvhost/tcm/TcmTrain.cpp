#include <algorithm>
#include <iostream>

#include "CommandFault.h"
#include "DataFile.h"
#include "Dataset.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "OutputPath.h"
#include "data/HVRawDataIterator.h"
#include "runner/HVRunner.h"
#include "tcm/HVTemporalTraining.h"
#include "tcm/TcmOptions.h"
#include "tcm/TrainingOptions.h"

void tcmTrain(const TcmTrainOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const std::string path = outputPath(options.output, options.force);
    InputFile input(options.input, FileOptions::Offered, watch);
    const Dataset& dataset = *input.dataset();
    std::vector<int> columns = trainingColumns(options, dataset);
    // In the order of the file, as a viewer reads the fields when it replays the preparation.
    std::ranges::sort(columns);
    HostSession session("tcm train", common, watch);
    HVRawDataIterator cases(dataset.source(), columns, {}, true, kWeightRound, true, nullptr);
    cases.SetName("cases");
    HVTemporalTraining training(session.runner(), &cases);
    configureTraining(options, dataset, training);
    if (options.printJob) {
        std::string job;
        training.GenerateHVL(path, job);
        std::cout << job << '\n';
        return;
    }
    JobOrigin origin = input.origin();
    session.perform(
        [&] {
            const bool isDone = training.Train(path);
            session.log("job: " + training.GetHVLJob());
            std::string id;
            std::string reason;
            std::string detail;
            // What a job reports, the session words itself.
            if (!isDone && training.hasError(id, reason, detail) && id.empty())
                throw CommandFault(ExitStatus::JobFailed, options.output + ": " + reason);
            return isDone;
        },
        origin);
    input.finish();
    session.finish();
}
