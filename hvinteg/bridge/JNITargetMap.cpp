#include "bridge/JNITargetMap.h"

#include <utility>

#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "bridge/JavaSignatures.h"

// The text is passed by value: the signature is part of the exported interface.
JNITargetMap::JNITargetMap(std::string json) // NOLINT(performance-unnecessary-value-param)
{
    init(JavaClassNames::TargetMap, true);
    JavaCall(*this, "fromJSON", "(" SIG_STRING ")Z", OnFailure::Record)
        .text(json)
        .callBoolean(getObject());
}

JNITargetMap::~JNITargetMap() = default;

bool JNITargetMap::ask(const char* question, const std::string& series)
{
    setClass(JavaClassNames::TargetMap);
    return JavaCall(*this, question, "(" SIG_STRING ")Z").text(series).callBoolean(getObject());
}

bool JNITargetMap::IsTarget(const std::string& series)
{
    return ask("isTarget", series);
}

bool JNITargetMap::IsPredictor(const std::string& series)
{
    return ask("isPredictor", series);
}

bool JNITargetMap::IsValidSeries(const std::string& series)
{
    return IsPredictor(series) || IsTarget(series);
}

bool JNITargetMap::IsArModelSeries(const std::string& series)
{
    return IsPredictor(series) && !IsTarget(series);
}

bool JNITargetMap::appendAll(const char* question, std::vector<std::string>& series)
{
    setClass(JavaClassNames::TargetMap);
    JavaCall call(*this, question, "()" SIG_LIST, OnFailure::Record);
    const LocalRef<> list = call.callObject(getObject());
    bool isWhole = !call.failed();
    const auto append = [&](LocalRef<> name) {
        std::string text = FromJString(static_cast<jstring>(name.get()));
        isWhole = isWhole && getEnv()->ExceptionCheck() == JNI_FALSE;
        handleException(false);
        if (isWhole)
            series.push_back(std::move(text));
    };
    const bool hasEnded = JavaCollections::forEachOf(*this, list.get(), OnFailure::Record, append);
    return hasEnded && isWhole;
}

bool JNITargetMap::GetAllTargets(std::vector<std::string>& series)
{
    return appendAll("getAllTargetSeries", series);
}

bool JNITargetMap::GetAllPredictors(std::vector<std::string>& series)
{
    return appendAll("getAllPredictorSeries", series);
}

bool JNITargetMap::GetArModelSeries(std::vector<std::string>& series)
{
    std::vector<std::string> predictors;
    if (!GetAllPredictors(predictors))
        return false;
    for (const std::string& predictor : predictors)
        if (!IsTarget(predictor))
            series.push_back(predictor);
    return true;
}

bool JNITargetMap::countPredictors(const std::string& target, int& count)
{
    setClass(JavaClassNames::TargetMap);
    JavaCall call(*this, "getPredictorIndexSet", "(" SIG_STRING ")" SIG_SET, OnFailure::Record);
    const LocalRef<> indexes = call.text(target).callObject(getObject());
    if (!indexes)
        return false;
    const LocalRef<jclass> type(getEnv(), getEnv()->GetObjectClass(indexes.get()));
    JavaCall size(*this, type.get(), "size", "()I", OnFailure::Record);
    count = size.callInt(indexes.get());
    return !size.failed();
}

bool JNITargetMap::GetTargetsWithoutInput(std::vector<std::string>& series)
{
    std::vector<std::string> targets;
    if (!GetAllTargets(targets))
        return false;
    for (const std::string& target : targets) {
        int predictors = 0;
        if (!countPredictors(target, predictors))
            return false;
        if (predictors == 1)
            series.push_back(target);
    }
    return true;
}
