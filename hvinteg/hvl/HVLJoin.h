#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Joins the records of several inputs. An input is identified by its position in the order of
/// AddPredFunction, from 0. Settings for a position without an input are ignored.
///
///     HVLJoin join(&program);
///     join.AddPredFunction(&people, "people");
///     join.AddPredFunction(&towns, "towns");
///     join.AddMatchField(0, "town", 1, "name");
///     join.SetOutputFieldNames(0, {"town", "age"});
class HVINTEG_EXPORT HVLJoin : public HVLFunction
{
public:
    /// Callers store the numbers. Any other value means Inner.
    enum JoinType : std::int32_t
    {
        Inner = 0,    ///< records that match
        Outer = 1,    ///< also records without a match, of the non-matching sources
        Anti = 2,     ///< only records without a match
        Cartesian = 3 ///< every combination of records; match fields are ignored
    };

    /// The program is borrowed.
    explicit HVLJoin(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLJoin(const HVLJoin& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLJoin& operator=(const HVLJoin& other);
    ~HVLJoin() override;

    /// Sets the type; Inner by default.
    void SetJoinType(JoinType type) { _type = type; }
    /// Adds a pair of fields. Records match if all pairs are equal.
    void AddMatchField(std::size_t source1, const std::string& field1, std::size_t source2,
                       const std::string& field2);
    /// Sets the fields of an input that are output, and replaces an earlier list. Without any list
    /// the engine decides.
    void SetOutputFieldNames(std::size_t source, const std::vector<std::string>& names);
    /// Keeps the records of this input that have no match.
    void AddNonMatchingSource(std::size_t source);

    /// Creates all inputs and this step. An input that cannot be created is left out, so callers
    /// check GenerateHVL of each input first.
    bool GenerateHVL() override;

private:
    /// Two fields that must be equal, each of an input by position.
    struct Match
    {
        std::size_t source1;
        std::string field1;
        std::size_t source2;
        std::string field2;
    };

    /// Null for a position without an input. The text is valid until an input is added.
    HVINTEG_HIDDEN const char* GetTag(std::size_t index) const;
    HVINTEG_HIDDEN void putMatches(JNIJSONObject& configuration) const;
    HVINTEG_HIDDEN void putOutputFields(JNIJSONObject& configuration) const;
    HVINTEG_HIDDEN void putNonMatchingSources(JNIJSONObject& configuration) const;

    JoinType _type = Inner;
    std::vector<Match> _matches;
    std::map<std::size_t, std::vector<std::string>> _outputFields;
    std::vector<std::size_t> _nonMatchingSources;
};
