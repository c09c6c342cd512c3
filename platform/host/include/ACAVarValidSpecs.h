#pragma once

#include <map>

/// What one variable of a record says about its valid values.
class ACAVarValidDesc
{
public:
    explicit ACAVarValidDesc(bool excludeUserMissing) : _excludeUserMissing(excludeUserMissing) {}
    /// Whether user-missing values count as missing.
    bool GetExclUserMiss() const { return _excludeUserMissing; }

private:
    bool _excludeUserMissing;
};

/// What an analysis takes as a valid value, variable by variable. A plain value.
class ACAVarValidSpecs
{
public:
    /// The description of the variable at a place of the record; null if there is none. Lasts until
    /// it is set anew.
    const ACAVarValidDesc* GetRecVarDescPtr(int place) const
    {
        const auto found = _descriptions.find(place);
        return found == _descriptions.end() ? nullptr : &found->second;
    }
    void SetExclUserMiss(int place, bool exclude)
    {
        _descriptions.insert_or_assign(place, ACAVarValidDesc(exclude));
    }

private:
    std::map<int, ACAVarValidDesc> _descriptions;
};
