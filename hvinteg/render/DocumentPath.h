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
    /// The value of a key; null if the key is missing or Java throws. takeFailure reports the
    /// latter.
    LocalRef<> get(jobject object, const std::string& key);
    /// Java's toString of a value. Throws JNIException. If the text cannot be converted, returns an
    /// empty text, and takeFailure reports it.
    std::string toString(jobject value);
    /// The end of a path: the start object itself, or an object that was fetched.
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
    /// Returns and clears the message of the last failure; empty if there was none.
    std::string takeFailure();

private:
    template <class Question>
    auto recorded(Question question);

    JNIJSONObject _object{nullptr};
    JNIJSONArray _array{static_cast<const char*>(nullptr)};
    std::string _failure;
};
