#pragma once

#include <map>

/// The rule for the valid values of one variable of a record.
class ACAVarValidDesc
{
public:
    /// `excludeUserMissing`: user-missing values count as missing.
    explicit ACAVarValidDesc(bool excludeUserMissing) : _excludeUserMissing(excludeUserMissing) {}
    /// Whether user-missing values count as missing.
    bool GetExclUserMiss() const { return _excludeUserMissing; }

private:
    bool _excludeUserMissing;
};

/// Rules for the valid values of an analysis, by variable. A value type.
class ACAVarValidSpecs
{
public:
    /// The rule for the variable at `place`, its index in the record; null if no rule was set.
    /// Valid until the rule is set again.
    const ACAVarValidDesc* GetRecVarDescPtr(int place) const
    {
        const auto found = _descriptions.find(place);
        return found == _descriptions.end() ? nullptr : &found->second;
    }
    /// Sets whether user-missing values of the variable at `place` count as missing.
    void SetExclUserMiss(int place, bool exclude)
    {
        _descriptions.insert_or_assign(place, ACAVarValidDesc(exclude));
    }

private:
    std::map<int, ACAVarValidDesc> _descriptions;
};
