#include "hvhost/tcm/TcmTrain.h"

#include <algorithm>
#include <iostream>

#include "data/HVRawDataIterator.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/OutputPath.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/tcm/TrainingOptions.h"
#include "runner/HVRunner.h"
#include "tcm/HVTemporalTraining.h"

namespace {

/// Throws CommandFault.
void runTraining(HVTemporalTraining& training, const std::string& path,
                 const TcmTrainOptions& options, HostSession& session, const JobOrigin& origin)
{
    const auto work = [&] {
        const bool isDone = training.Train(path);
        session.log("job: " + training.GetHVLJob());
        std::string id;
        std::string reason;
        std::string detail;
        // The session itself reports the errors of jobs.
        if (!isDone && training.hasError(id, reason, detail) && id.empty())
            throw CommandFault(ExitStatus::JobFailed, options.output + ": " + reason);
        return isDone;
    };
    session.perform(work, origin);
}

} // namespace

void tcmTrain(const TcmTrainOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const std::string path = outputPath(options.output, options.force);
    InputFile input(options.input, FileOptions::Offered, watch);
    const Dataset& dataset = *input.dataset();
    std::vector<int> columns =
        explainingTexts(input, [&] { return trainingColumns(options, dataset); });
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
    origin.settings = trainingSettings();
    session.introduce(input);
    runTraining(training, path, options, session, origin);
    input.finish();
    session.finish();
}
