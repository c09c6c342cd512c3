#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Sets records of several inputs side by side. Inputs are addressed by the position at which
/// AddPredFunction added them, from 0; what is said of a position without an input is left out.
///
///     HVLJoin join(&program);
///     join.AddPredFunction(&people, "people");
///     join.AddPredFunction(&towns, "towns");
///     join.AddMatchField(0, "town", 1, "name");
///     join.SetOutputFieldNames(0, {"town", "age"});
class HVINTEG_EXPORT HVLJoin : public HVLFunction
{
public:
    /// The numbers are part of the contract with callers that store them; another one counts as
    /// Inner.
    enum JoinType : std::int32_t
    {
        Inner = 0,    ///< records that match
        Outer = 1,    ///< and those that do not, of the non-matching sources
        Anti = 2,     ///< only those that do not
        Cartesian = 3 ///< every record with every other one; match fields do not count
    };

    explicit HVLJoin(JNIHvlProgram* program);
    HVLJoin(const HVLJoin& other);
    HVLJoin& operator=(const HVLJoin& other);
    ~HVLJoin() override;

    void SetJoinType(JoinType type) { _type = type; }
    /// Records match where all pairs of fields are equal.
    void AddMatchField(std::size_t source1, const std::string& field1, std::size_t source2,
                       const std::string& field2);
    /// The fields that an input contributes, in place of an earlier list. Without any list the
    /// engine decides.
    void SetOutputFieldNames(std::size_t source, const std::vector<std::string>& names);
    /// An input whose records without a match are kept.
    void AddNonMatchingSource(std::size_t source);

    /// False too if an input cannot be created: the job would run without its records.
    bool GenerateHVL() override;

private:
    /// Fields of two inputs, each by its position, that must be equal.
    struct Match
    {
        std::size_t source1;
        std::string field1;
        std::size_t source2;
        std::string field2;
    };

    /// Null for a position without an input. The text is good until an input is added.
    const char* GetTag(std::size_t index) const;
    void putMatches(JNIJSONObject& configuration) const;
    void putOutputFields(JNIJSONObject& configuration) const;
    void putNonMatchingSources(JNIJSONObject& configuration) const;

    JoinType _type = Inner;
    std::vector<Match> _matches;
    std::map<std::size_t, std::vector<std::string>> _outputFields;
    std::vector<std::size_t> _nonMatchingSources;
};
