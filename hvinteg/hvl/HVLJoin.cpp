#include "hvl/HVLJoin.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

namespace {

const char* wordOf(HVLJoin::JoinType type)
{
    switch (type) {
    case HVLJoin::Outer:
        return "Outer";
    case HVLJoin::Anti:
        return "Anti";
    case HVLJoin::Cartesian:
        return "Cartesian";
    default:
        return "Inner";
    }
}

} // namespace

HVLJoin::HVLJoin(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(JoinFunction);
}

HVLJoin::HVLJoin(const HVLJoin& other) = default;

HVLJoin& HVLJoin::operator=(const HVLJoin& other) = default;

HVLJoin::~HVLJoin() = default;

void HVLJoin::AddMatchField(std::size_t source1, const std::string& field1, std::size_t source2,
                            const std::string& field2)
{
    _matches.push_back({source1, field1, source2, field2});
}

void HVLJoin::SetOutputFieldNames(std::size_t source, const std::vector<std::string>& names)
{
    _outputFields[source] = names;
}

void HVLJoin::AddNonMatchingSource(std::size_t source)
{
    _nonMatchingSources.push_back(source);
}

bool HVLJoin::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    CompleteTags("str");
    GenerateAllPredecessors();

    JNIJSONObject configuration;
    putMatches(configuration);
    putOutputFields(configuration);
    configuration.put("joinType", wordOf(_type));
    putNonMatchingSources(configuration);
    return CreateTaggedFunction("join", configuration);
}

const char* HVLJoin::GetTag(std::size_t index) const
{
    return index < GetTags().size() ? GetTags()[index].c_str() : nullptr;
}

void HVLJoin::putMatches(JNIJSONObject& configuration) const
{
    JNIJSONArray matches;
    // A Cartesian join requires the key, with an empty list.
    if (_type != Cartesian) {
        for (const Match& match : _matches) {
            const char* const tag1 = GetTag(match.source1);
            const char* const tag2 = GetTag(match.source2);
            // A position without an input. Inputs may be added after the matches.
            if (tag1 == nullptr || tag2 == nullptr)
                continue;
            JNIJSONObject fields;
            fields.put(tag1, match.field1.c_str());
            fields.put(tag2, match.field2.c_str());
            matches.add(&fields);
        }
    }
    configuration.put("matchFields", &matches);
}

void HVLJoin::putOutputFields(JNIJSONObject& configuration) const
{
    JNIJSONObject fields;
    for (const auto& [source, names] : _outputFields) {
        const char* const tag = GetTag(source);
        if (tag == nullptr)
            continue;
        JNIJSONArray list;
        for (const std::string& name : names)
            list.add(name.c_str());
        fields.put(tag, &list);
    }
    configuration.put("outputFields", &fields);
}

void HVLJoin::putNonMatchingSources(JNIJSONObject& configuration) const
{
    if (_nonMatchingSources.empty())
        return;
    JNIJSONArray tags;
    for (const std::size_t source : _nonMatchingSources)
        if (const char* const tag = GetTag(source))
            tags.add(tag);
    configuration.put("nonMatchingSources", &tags);
}
