#pragma once

#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/combine/JoinKeys.h"

class HVLFunction;
class JNIHvlProgram;

/// The steps of a job that join two inputs. The result has the fields of the left input, then those
/// of the right one, without the keys of the right one,
/// and the order of the inputs. Borrows all arguments.
class JoinedRecords
{
public:
    /// `how` is inner, left, right, full or anti.
    JoinedRecords(JNIHvlProgram& program, HVLFunction& left, HVLFunction& right,
                  const CombinedInputs& inputs, const std::vector<JoinKey>& keys,
                  const std::string& how);
    ~JoinedRecords();
    JoinedRecords(const JoinedRecords&) = delete;
    JoinedRecords& operator=(const JoinedRecords&) = delete;

    HVLFunction* last() { return _last; }
    /// The names of the result's fields.
    const std::vector<std::string>& names() const { return _names; }

private:
    HVLFunction* copyKeys(HVLFunction& right);
    void addJoin(HVLFunction& left, HVLFunction& right, const CombinedInputs& inputs);
    /// The configuration of the join, by the tags of the inputs and the fields that they output.
    nlohmann::json settings(const std::string& left, const std::vector<std::string>& ofLeft,
                            const std::string& right,
                            const std::vector<std::string>& ofRight) const;
    void takeCopies();
    void append(std::unique_ptr<HVLFunction> step, HVLFunction* input);
    /// Whether the result has records of the right input only, whose keys are there.
    bool keepsRight() const { return _how == "right" || _how == "full"; }

    JNIHvlProgram& _program;
    const std::vector<JoinKey>& _keys;
    std::string _how;
    std::vector<std::unique_ptr<HVLFunction>> _steps;
    std::vector<std::string> _copies; ///< copies of the right keys
    std::vector<std::string> _names;
    HVLFunction* _last = nullptr;
};
