#pragma once

#include <vector>

#include "hvhost/base/JobOrigin.h"
#include "hvhost/tcm/TcmTrain.h"

class Dataset;
class HVTemporalTraining;

/// The columns of a dataset that the training reads. Throws CommandFault (Usage) for a variable
/// that is missing, is named twice or cannot be a metric, and without a time.
std::vector<int> trainingColumns(const TcmTrainOptions& options, const Dataset& dataset);

/// Passes the options to the builder, with the variables' own spelling. Throws CommandFault
/// (Usage), naming the option.
void configureTraining(const TcmTrainOptions& options, const Dataset& dataset,
                       HVTemporalTraining& training);

/// The engine's settings that the options set, for messages about them.
std::vector<JobOrigin::Setting> trainingSettings();
