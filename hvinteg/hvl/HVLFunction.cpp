#include "hvl/HVLFunction.h"

#include <algorithm>
#include <cstddef>
#include <map>

#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"

HVLFunction::HVLFunction(JNIHvlProgram* program) : _program(program) {}

HVLFunction::HVLFunction(const HVLFunction& other) = default;

HVLFunction& HVLFunction::operator=(const HVLFunction& other) = default;

HVLFunction::~HVLFunction() = default;

JNIHvlFunction* HVLFunction::GetHVFunction()
{
    return _function;
}

void HVLFunction::AddPredFunction(HVLFunction* pred)
{
    AddPredFunction(pred, std::string());
}

void HVLFunction::AddPredFunction(HVLFunction* pred, const std::string& tag)
{
    if (pred == nullptr)
        return;
    _tags.push_back(tag);
    _predecessors.push_back(pred);
}

void HVLFunction::CompleteTags(const char* base)
{
    unsigned int count = 0;
    for (std::size_t i = 0; i < _tags.size(); ++i) {
        const std::string stem = _tags[i].empty() ? base : _tags[i];
        std::string candidate = _tags[i].empty() ? stem + std::to_string(++count) : stem;
        while (isTagTaken(candidate, i))
            candidate = stem + std::to_string(++count);
        _tags[i] = std::move(candidate);
    }
}

/// Only earlier inputs count: a later one that has the same tag gives way itself.
bool HVLFunction::isTagTaken(const std::string& tag, std::size_t before) const
{
    const auto end = _tags.begin() + static_cast<std::ptrdiff_t>(before);
    return std::find(_tags.begin(), end, tag) != end;
}

HVLFunction* HVLFunction::GetFirstPredecessor() const
{
    return _predecessors.empty() ? nullptr : _predecessors.front();
}

std::optional<bool> HVLFunction::GetKnownResult() const
{
    if (_program == nullptr)
        return false;
    if (_isCreated)
        return true;
    return std::nullopt;
}

void HVLFunction::GenerateFirstPredecessor()
{
    if (HVLFunction* pred = GetFirstPredecessor())
        pred->GenerateHVL();
}

bool HVLFunction::CreateFunction(const std::string& name, JNIJSONObject& configuration)
{
    HVLFunction* pred = GetFirstPredecessor();
    return KeepFunction(
        pred == nullptr ? _program->createHvlFunction(name, &configuration)
                        : _program->createHvlFunction(name, &configuration, pred->GetHVFunction()));
}

void HVLFunction::GenerateAllPredecessors()
{
    for (HVLFunction* pred : _predecessors)
        pred->GenerateHVL();
}

bool HVLFunction::CreateTaggedFunction(const std::string& name, JNIJSONObject& configuration)
{
    if (_predecessors.empty())
        return KeepFunction(_program->createHvlFunction(name, &configuration));
    std::map<std::string, JNIHvlFunction*> inputs;
    for (std::size_t i = 0; i < _predecessors.size(); ++i)
        inputs[_tags[i]] = _predecessors[i]->GetHVFunction();
    return KeepFunction(_program->createHvlFunction(name, &configuration, &inputs));
}

bool HVLFunction::KeepFunction(JNIHvlFunction* function)
{
    _function = function;
    if (function == nullptr)
        return false;
    // A step that feeds several others is asked by each, and must come into being once.
    _isCreated = true;
    return true;
}
