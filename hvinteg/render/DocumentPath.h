#pragma once

#include <string>
#include <vector>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/LocalRef.h"

/// Finds parts of a result document on the Java side, for those that go on as they are.
///
/// It has readers of its own, so that a caller's stays at what it has wrapped.
class DocumentPath
{
public:
    JNIJSONObject& reader() { return _object; }
    /// The value of a key; null if there is none, or if Java throws, which takeFailure tells.
    LocalRef<> get(jobject object, const std::string& key);
    /// The text that Java makes of a value. Throws JNIException; empty if Java has the text but
    /// cannot hand it over, which takeFailure tells.
    std::string toString(jobject value);
    /// Where segments lead to: the object that they start from, or one that was fetched.
    struct Place
    {
        LocalRef<> fetched;
        jobject object = nullptr;
    };
    /// Nowhere if they lead to nothing or to a text.
    Place follow(jobject object, const std::vector<std::string>& segments);
    /// Nowhere for an empty path too.
    Place followPath(jobject object, const std::string& path);
    /// The JSON text of an object or array that has an object in it; empty for anything else.
    std::string jsonOf(jobject value);
    /// Whether it is an object or an array that holds something.
    bool hasContent(jobject value);
    /// What Java last said to a failure since this was last called; empty if there was none.
    std::string takeFailure();

private:
    template <class Question>
    auto recorded(Question question);

    JNIJSONObject _object{nullptr};
    JNIJSONArray _array{static_cast<const char*>(nullptr)};
    std::string _failure;
};
