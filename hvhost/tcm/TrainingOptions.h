#pragma once

#include "hvhost/tcm/TcmOptions.h"

class Dataset;
class HVTemporalTraining;

/// The columns of a dataset that the training reads. Throws CommandFault (Usage) for a variable
/// that is not there, is named twice or cannot be a metric, and without a time.
std::vector<int> trainingColumns(const TcmTrainOptions& options, const Dataset& dataset);

/// Hands the options to the builder, with the variables' own spelling. Throws CommandFault (Usage),
/// naming the option.
void configureTraining(const TcmTrainOptions& options, const Dataset& dataset,
                       HVTemporalTraining& training);

/// A fault of the engine that names a setting, told as one of the option that made it.
std::string inTrainingOptions(const std::string& text);
