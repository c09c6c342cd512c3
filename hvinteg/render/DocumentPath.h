#pragma once

#include <string>
#include <vector>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/LocalRef.h"

/// Finds parts of a result document in Java, which are passed on unchanged.
///
/// Uses its own readers, so that a caller's reader keeps its wrapped object.
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
    /// Follows segments. Returns an empty place if they lead to nothing or to a text.
    Place follow(jobject object, const std::vector<std::string>& segments);
    /// Follows a path. Returns an empty place also for an empty path.
    Place followPath(jobject object, const std::string& path);
    /// The JSON text of an object or array that contains an object; empty for any other value.
    std::string jsonOf(jobject value);
    /// Whether the value is an object or array that is not empty.
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
