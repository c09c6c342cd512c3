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
    /// The value of a key; null if there is none.
    LocalRef<> get(jobject object, const std::string& key);
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

private:
    JNIJSONObject _object{nullptr};
    JNIJSONArray _array{static_cast<const char*>(nullptr)};
};
