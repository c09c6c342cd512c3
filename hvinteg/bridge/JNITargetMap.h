#pragma once

#include <string>
#include <vector>

#include "bridge/JNIHvlAccessor.h"

/// Reports which series of a temporal causal model are targets, predictors or both. Series are
/// identified by ids such as "4-1".
///
///     JNITargetMap series(netGraph);
///     if (series.IsTarget("4-1")) ...
///
/// Functions that fill a list append in the order of the model. They return false on a failure,
/// which is recorded for getErrorMessage; the series appended before it remain. Questions about one
/// series throw JNIException. The Java object lives until JNIObjectManager::cleanJRef.
class HVINTEG_EXPORT JNITargetMap : public JNIHvlAccessor
{
public:
    /// Reads the network of a model (JSON). An invalid text gives no series.
    explicit JNITargetMap(std::string json);
    JNITargetMap(const JNITargetMap&) = default;
    JNITargetMap& operator=(const JNITargetMap&) = default;
    ~JNITargetMap() override;

    /// Whether the series is a target.
    bool IsTarget(const std::string& series);
    /// Whether the series is a predictor.
    bool IsPredictor(const std::string& series);
    /// Whether the series is a target or a predictor.
    bool IsValidSeries(const std::string& series);
    /// Whether the series is only a predictor. Such a series depends only on its own past.
    bool IsArModelSeries(const std::string& series);

    /// Appends all targets.
    bool GetAllTargets(std::vector<std::string>& series);
    /// Appends all predictors.
    bool GetAllPredictors(std::vector<std::string>& series);
    /// Appends the series that are only predictors.
    bool GetArModelSeries(std::vector<std::string>& series);
    /// Appends the targets with exactly one predictor, which is their own past.
    bool GetTargetsWithoutInput(std::vector<std::string>& series);

private:
    HVINTEG_HIDDEN bool ask(const char* question, const std::string& series);
    HVINTEG_HIDDEN bool appendAll(const char* question, std::vector<std::string>& series);
    /// Returns false on failure.
    HVINTEG_HIDDEN bool countPredictors(const std::string& target, int& count);
};
