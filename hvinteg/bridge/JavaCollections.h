#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bridge/JNIHvlExpression.h"
#include "bridge/JavaCall.h"

/// How to convert a vector of wrappers to a java.util.ArrayList. A null vector is always a Java
/// null.
struct ListRule
{
    bool emptyIsNull; ///< an empty vector becomes a Java null
    bool skipsNull;   ///< a null element is left out, otherwise it becomes a Java null
};

namespace ListRules {
inline constexpr ListRule Positional{false, false}; ///< positions matter, so nulls are kept
inline constexpr ListRule Signatures{true, false};  ///< clauses and lambda signatures
inline constexpr ListRule Items{true, true};        ///< the items of a list expression
inline constexpr ListRule Components{false, true};  ///< the components of a tuple
inline constexpr ListRule Containers{true, true};   ///< inputs and outputs of a component
} // namespace ListRules

/// Convert between C++ and Java collections for a wrapper, without changing its class and method.
/// Results are local references. They throw JNIException.
namespace JavaCollections {
using Wrappers = std::vector<const JNIHvlAccessor*>;

LocalRef<> list(JNIHvlAccessor& caller, const Wrappers& elements, bool skipsNull);
LocalRef<> set(JNIHvlAccessor& caller, const Wrappers& elements);
/// Returns null after a recorded failure.
LocalRef<> array(JNIHvlAccessor& caller, const char* elementClass, const Wrappers& elements,
                 OnFailure onFailure);
/// Leaves out entries without a wrapper.
LocalRef<> map(JNIHvlAccessor& caller, const std::map<std::string, const JNIHvlAccessor*>& entries);
/// A null map and an empty map become a Java null.
LocalRef<> typeMap(JNIHvlAccessor& caller,
                   const std::map<std::string, JNIHvlExpression::SimpleTypes>* types);
/// A null vector becomes a Java null.
LocalRef<> stringArray(JNIHvlAccessor& caller, const std::vector<std::string>* texts);
LocalRef<> booleanArray(JNIHvlAccessor& caller, const std::vector<bool>& flags);

/// Calls `take` with each element of a java.util.List, in order; a null list has none.
using Taker = std::function<void(LocalRef<> element)>;
void forEachOfList(JNIHvlAccessor& caller, jobject list, const Taker& take);
/// The same for any collection. Returns false after a recorded failure, which ends the loop.
bool forEachOf(JNIHvlAccessor& caller, jobject collection, OnFailure onFailure, const Taker& take);

template <class Wrapper>
LocalRef<> listOf(JNIHvlAccessor& caller, const std::vector<Wrapper*>* elements, ListRule rule)
{
    if (elements == nullptr || (elements->empty() && rule.emptyIsNull))
        return {};
    return list(caller, Wrappers(elements->begin(), elements->end()), rule.skipsNull);
}

/// A null vector and a null element become a Java null.
template <class Wrapper>
LocalRef<> arrayOf(JNIHvlAccessor& caller, const char* elementClass,
                   const std::vector<Wrapper*>* elements, OnFailure onFailure = OnFailure::Throw)
{
    if (elements == nullptr)
        return {};
    return array(caller, elementClass, Wrappers(elements->begin(), elements->end()), onFailure);
}

/// A null map becomes a Java null.
template <class Wrapper>
LocalRef<> mapOf(JNIHvlAccessor& caller, const std::map<std::string, Wrapper*>* entries)
{
    if (entries == nullptr)
        return {};
    return map(caller, {entries->begin(), entries->end()});
}
} // namespace JavaCollections
