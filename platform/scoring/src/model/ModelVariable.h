#pragma once

#include <string>
#include <utility>

#include "IMCVariable.h"
#include "values/Cell.h"

namespace scoring {

/// A variable of a model. Its type and storage follow from its kind of value.
class ModelVariable : public IMCVariable
{
public:
    ModelVariable(std::string name, ValueKind kind) : _name(std::move(name)), _kind(kind) {}

    int GetValueType() const override { return isText() ? kString : kNumber; }
    void GetName(std::string& name) const override { name = _name; }
    int GetStorage() const override
    {
        switch (_kind) {
        case ValueKind::Text:
            return kStoredString;
        case ValueKind::Date:
            return kStoredDate;
        case ValueKind::Time:
            return kStoredTime;
        case ValueKind::Moment:
            return kStoredTimestamp;
        default:
            return kStoredReal;
        }
    }
    const std::string& name() const { return _name; }
    ValueKind kind() const { return _kind; }
    bool isText() const { return _kind == ValueKind::Text; }

private:
    std::string _name;
    ValueKind _kind;
};

} // namespace scoring
