#pragma once

#include <string>
#include <vector>

#include "bridge/JNIHvlAccessor.h"

/// Which series of a temporal causal model are targets, which are predictors, and which are both.
/// Series are told by their ids, as in "4-1".
///
///     JNITargetMap series(netGraph);
///     if (series.IsTarget("4-1")) ...
///
/// Lists are appended to, in the order of the model; false after a failure, which is recorded for
/// getErrorMessage and leaves what was appended until then. A failure of a question about one
/// series throws JNIException. The Java object lives until JNIObjectManager::cleanJRef.
class HVINTEG_EXPORT JNITargetMap : public JNIHvlAccessor
{
public:
    /// Reads the network of a model, JSON. Of a text that is none there are no series.
    explicit JNITargetMap(std::string json);
    JNITargetMap(const JNITargetMap&) = default;
    JNITargetMap& operator=(const JNITargetMap&) = default;
    ~JNITargetMap() override;

    bool IsTarget(const std::string& series);
    bool IsPredictor(const std::string& series);
    bool IsValidSeries(const std::string& series);
    /// Whether it is a predictor alone: what becomes of it, only its own past tells.
    bool IsArModelSeries(const std::string& series);

    bool GetAllTargets(std::vector<std::string>& series);
    bool GetAllPredictors(std::vector<std::string>& series);
    bool GetArModelSeries(std::vector<std::string>& series);
    /// The targets with exactly one predictor: that is their own past.
    bool GetTargetsWithoutInput(std::vector<std::string>& series);

private:
    bool ask(const char* question, const std::string& series);
    bool appendAll(const char* question, std::vector<std::string>& series);
    /// False after a failure.
    bool countPredictors(const std::string& target, int& count);
};
