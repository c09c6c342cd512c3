#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bridge/JNIHvlExpression.h"
#include "bridge/JavaCall.h"

/// How a vector of wrappers becomes a java.util.ArrayList. A null vector is a Java null always.
struct ListRule
{
    bool emptyIsNull; ///< an empty vector passes a Java null
    bool skipsNull;   ///< a null element is left out, else added as a Java null
};

namespace ListRules {
inline constexpr ListRule Positional{false, false}; ///< places count, so nulls keep theirs
inline constexpr ListRule Signatures{true, false};  ///< clauses and lambda signatures
inline constexpr ListRule Items{true, true};        ///< the items of a list expression
inline constexpr ListRule Components{false, true};  ///< the components of a tuple
inline constexpr ListRule Containers{true, true};   ///< inputs and outputs of a component
} // namespace ListRules

/// Conversions between C++ collections and Java ones, on behalf of a wrapper whose kept class and
/// method they leave alone. Results are local references. They throw JNIException.
namespace JavaCollections {
using Wrappers = std::vector<const JNIHvlAccessor*>;

LocalRef<> list(JNIHvlAccessor& caller, const Wrappers& elements, bool skipsNull);
LocalRef<> set(JNIHvlAccessor& caller, const Wrappers& elements);
/// Null after a recorded failure.
LocalRef<> array(JNIHvlAccessor& caller, const char* elementClass, const Wrappers& elements,
                 OnFailure onFailure);
/// Entries without a wrapper are left out.
LocalRef<> map(JNIHvlAccessor& caller, const std::map<std::string, const JNIHvlAccessor*>& entries);
/// A null map and an empty one pass a Java null.
LocalRef<> typeMap(JNIHvlAccessor& caller,
                   const std::map<std::string, JNIHvlExpression::SimpleTypes>* types);
/// A null vector passes a Java null.
LocalRef<> stringArray(JNIHvlAccessor& caller, const std::vector<std::string>* texts);
LocalRef<> booleanArray(JNIHvlAccessor& caller, const std::vector<bool>& flags);

/// Hands each element of a java.util.List to `take`, in order; a null list has none.
using Taker = std::function<void(LocalRef<> element)>;
void forEachOfList(JNIHvlAccessor& caller, jobject list, const Taker& take);
/// The same for any collection, by its iterator. False after a recorded failure: no more come.
bool forEachOf(JNIHvlAccessor& caller, jobject collection, OnFailure onFailure, const Taker& take);

template <class Wrapper>
LocalRef<> listOf(JNIHvlAccessor& caller, const std::vector<Wrapper*>* elements, ListRule rule)
{
    if (elements == nullptr || (elements->empty() && rule.emptyIsNull))
        return {};
    return list(caller, Wrappers(elements->begin(), elements->end()), rule.skipsNull);
}

/// A null vector passes a Java null, a null element is one.
template <class Wrapper>
LocalRef<> arrayOf(JNIHvlAccessor& caller, const char* elementClass,
                   const std::vector<Wrapper*>* elements, OnFailure onFailure = OnFailure::Throw)
{
    if (elements == nullptr)
        return {};
    return array(caller, elementClass, Wrappers(elements->begin(), elements->end()), onFailure);
}

/// A null map passes a Java null.
template <class Wrapper>
LocalRef<> mapOf(JNIHvlAccessor& caller, const std::map<std::string, Wrapper*>* entries)
{
    if (entries == nullptr)
        return {};
    return map(caller, {entries->begin(), entries->end()});
}
} // namespace JavaCollections
