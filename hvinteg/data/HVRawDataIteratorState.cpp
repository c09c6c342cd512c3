// The settings of an iterator and what it counted.
#include "data/HVRawDataIteratorImpl.h"

void HVRawDataIterator::SetName(const std::string& name)
{
    _impl->name = name;
}

void HVRawDataIterator::SetExcludeUserMissing(bool exclude)
{
    _impl->reader.rules.excludeUserMissing = exclude;
}

void HVRawDataIterator::SetVarValidSpecs(const ACAVarValidSpecs* specs)
{
    _impl->reader.rules.validSpecs = specs;
}

void HVRawDataIterator::SetScoreIteration(bool score)
{
    _impl->scoreIteration = score;
}

void HVRawDataIterator::SetStopProcessor(HVStopProcessor* processor)
{
    _impl->reader.stopProcessor = processor;
}

void HVRawDataIterator::SetFreqWeightAdj(WeightAdjust adjust)
{
    // The data model states whether there is a weight, so only its rounding may change.
    if (_impl->reader.rules.adjust != kWeightNone && adjust != kWeightNone)
        _impl->reader.rules.adjust = adjust;
}

void HVRawDataIterator::SetVariableIncrement(int target, int source, double value)
{
    _impl->reader.rules.incrementTarget = target;
    _impl->reader.rules.incrementSource = source;
    _impl->reader.rules.incrementValue = value;
    _impl->reader.rules.settle();
}

void HVRawDataIterator::SetCancelStatus()
{
    _impl->reader.cancelled.isSet = true;
}

void HVRawDataIterator::UpdateUserMissing()
{
    // Excluded everywhere: every field keeps its declared missing values.
    if (_impl->reader.rules.excludeUserMissing && !_impl->reader.rules.validSpecs)
        return;
    CFMetaData updated;
    for (std::size_t i = 0; i < _impl->metadata.FieldCount(); ++i) {
        CFField field = *_impl->metadata.GetField(i);
        const RecordRules& rules = _impl->reader.rules;
        if (!rules.fields[i].isCaseCount && !rules.isExcluded(static_cast<int>(i)))
            field.SetMissingValues(CFMissingValues());
        updated.AppendField(field);
    }
    _impl->describe(updated);
}

bool HVRawDataIterator::GetExcludeUserMissing() const
{
    return _impl->reader.rules.excludeUserMissing;
}

WeightAdjust HVRawDataIterator::GetFreqWeightAdj() const
{
    return _impl->reader.rules.adjust;
}

bool HVRawDataIterator::GetScoreIteration() const
{
    return _impl->scoreIteration;
}

HVStopProcessor* HVRawDataIterator::GetStopProcessor() const
{
    return _impl->reader.stopProcessor;
}

const ACAVarValidSpecs* HVRawDataIterator::GetVarValidSpecs() const
{
    return _impl->reader.rules.validSpecs;
}

VEXA_InputCaseIterator* HVRawDataIterator::GetStatDSIter() const
{
    return _impl->reader.cases.get();
}

bool HVRawDataIterator::GetCancelStatus() const
{
    return _impl->reader.cancelled.isSet;
}

const CFMetaData& HVRawDataIterator::getMetaData() const
{
    return _impl->metadata;
}

int HVRawDataIterator::GetIncrTargetVarInd() const
{
    return _impl->reader.rules.incrementTarget;
}

int HVRawDataIterator::GetIncrSourceVarInd() const
{
    return _impl->reader.rules.incrementSource;
}

double HVRawDataIterator::GetIncrVarValue() const
{
    return _impl->reader.rules.incrementValue;
}

int HVRawDataIterator::GetNCases() const
{
    return _impl->reader.counts.cases;
}

int HVRawDataIterator::GetNValidCases() const
{
    return _impl->reader.counts.valid;
}

int HVRawDataIterator::GetNInvalidCases() const
{
    return _impl->reader.counts.invalid;
}

double HVRawDataIterator::GetWeightNCases() const
{
    return _impl->reader.counts.weightOfCases;
}

double HVRawDataIterator::GetWeightNValidCases() const
{
    return _impl->reader.counts.weightOfValid;
}

double HVRawDataIterator::GetWeightNInvalidCases() const
{
    return _impl->reader.counts.weightOfInvalid;
}

bool HVRawDataIterator::AreAllWeightsGood() const
{
    return _impl->reader.counts.allWeightsGood;
}

bool HVRawDataIterator::AreAllWeightsIntegers() const
{
    return _impl->reader.counts.allWeightsIntegers;
}
