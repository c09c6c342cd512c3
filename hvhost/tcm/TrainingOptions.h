#pragma once

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

/// Rewords an error of the engine about a setting as an error about the option that set it.
std::string inTrainingOptions(const std::string& text);
