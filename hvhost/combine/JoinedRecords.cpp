#include "hvhost/combine/JoinedRecords.h"

#include <algorithm>

#include "bridge/JNIHvlProgram.h"
#include "datafile/FieldNames.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/job/EngineStep.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"

namespace {

const char* joinTypeOf(const std::string& how)
{
    return how == "inner" ? "Inner" : how == "anti" ? "Anti" : "Outer";
}

} // namespace

JoinedRecords::JoinedRecords(JNIHvlProgram& program, HVLFunction& left, HVLFunction& right,
                             const CombinedInputs& inputs, const std::vector<JoinKey>& keys,
                             const std::string& how)
    : _program(program), _keys(keys), _how(how)
{
    addJoin(left, keepsRight() ? *copyKeys(right) : right, inputs);
    if (keepsRight())
        takeCopies();
}

JoinedRecords::~JoinedRecords() = default;

void JoinedRecords::append(std::unique_ptr<HVLFunction> step, HVLFunction* input)
{
    step->AddPredFunction(input);
    _steps.push_back(std::move(step));
    _last = _steps.back().get();
}

/// Copies the right keys under names that do not clash with those of the left input.
HVLFunction* JoinedRecords::copyKeys(HVLFunction& right)
{
    _last = &right;
    for (const JoinKey& key : _keys) {
        _copies.push_back("hvhost key " + std::to_string(_copies.size() + 1));
        std::vector<JNIHvlExpression*> field{_program.createHvlExpressionFieldReference(key.right)};
        auto derive = std::make_unique<HVLExpressionFun>(&_program);
        derive->SetDeriveField(_copies.back(), _program.createHvlExpression("%s", &field));
        append(std::move(derive), _last);
    }
    return _last;
}

void JoinedRecords::addJoin(HVLFunction& left, HVLFunction& right, const CombinedInputs& inputs)
{
    const std::vector<std::string> ofLeft = inputs.dataset(0).names();
    std::vector<std::string> ofRight;
    if (_how != "anti")
        for (const std::string& name : inputs.dataset(1).names())
            if (std::ranges::find(_keys, name, &JoinKey::right) == _keys.end())
                ofRight.push_back(name);
    // The engine gives names that clash a number.
    _names = ofLeft;
    _names.insert(_names.end(), ofRight.begin(), ofRight.end());
    _names = datafile::uniqueNames(_names);
    ofRight.insert(ofRight.end(), _copies.begin(), _copies.end());
    auto join = std::make_unique<EngineStep>(
        &_program, "join", settings(inputs.tag(0), ofLeft, inputs.tag(1), ofRight));
    join->AddPredFunction(&left, inputs.tag(0));
    join->AddPredFunction(&right, inputs.tag(1));
    append(std::move(join), nullptr);
}

nlohmann::json JoinedRecords::settings(const std::string& left,
                                       const std::vector<std::string>& ofLeft,
                                       const std::string& right,
                                       const std::vector<std::string>& ofRight) const
{
    nlohmann::json matches = nlohmann::json::array();
    for (const JoinKey& key : _keys)
        matches.push_back({{left, key.left}, {right, key.right}});
    nlohmann::json settings{{"matchFields", matches},
                            {"joinType", joinTypeOf(_how)},
                            {"outputFields", {{left, ofLeft}}},
                            {"keepOrder", true}};
    if (!ofRight.empty())
        settings["outputFields"][right] = ofRight;
    if (_how == "left" || _how == "full" || _how == "anti")
        settings["nonMatchingSources"].push_back(left);
    if (keepsRight())
        settings["nonMatchingSources"].push_back(right);
    return settings;
}

/// A record without a partner on the left has its key in the copy.
void JoinedRecords::takeCopies()
{
    for (std::size_t i = 0; i < _keys.size(); ++i) {
        std::vector<JNIHvlExpression*> fields{
            _program.createHvlExpressionFieldReference(_keys[i].left),
            _program.createHvlExpressionFieldReference(_copies[i])};
        auto take = std::make_unique<HVLExpressionFun>(&_program);
        take->SetReclassifyField(_keys[i].left,
                                 _program.createHvlExpression("ifMissing(%s, %s)", &fields));
        append(std::move(take), _last);
    }
    auto keep = std::make_unique<HVLFilterFields>(&_program);
    keep->KeepFieldNames(_names);
    append(std::move(keep), _last);
}
