#include "render/DocumentPath.h"

#include <utility>

#include "support/DottedPath.h"

/// Asks a separate wrapper, so that its error message belongs to this question only.
template <class Question>
auto DocumentPath::recorded(Question question)
{
    JNIJSONObject wrapper(nullptr);
    auto answer = question(wrapper);
    if (!wrapper.getErrorMessage().empty())
        _failure = wrapper.getErrorMessage();
    return answer;
}

LocalRef<> DocumentPath::get(jobject object, const std::string& key)
{
    if (!_object.isJSONObject(object))
        return {};
    return recorded([&](JNIJSONObject& wrapper) {
        return LocalRef<>(wrapper.getEnv(), wrapper.get(object, key.c_str()));
    });
}

std::string DocumentPath::toString(jobject value)
{
    return recorded([&](JNIJSONObject& wrapper) { return wrapper.toString(value); });
}

std::string DocumentPath::takeFailure()
{
    return std::exchange(_failure, {});
}

DocumentPath::Place DocumentPath::follow(jobject object, const std::vector<std::string>& segments)
{
    Place place;
    place.object = object;
    for (const std::string& segment : segments) {
        place.fetched = get(place.object, segment);
        place.object = place.fetched.get();
    }
    if (_object.isString(place.object))
        place.object = nullptr;
    return place;
}

DocumentPath::Place DocumentPath::followPath(jobject object, const std::string& path)
{
    const std::vector<std::string> segments = segmentsOf(path);
    return segments.empty() ? Place() : follow(object, segments);
}

std::string DocumentPath::jsonOf(jobject value)
{
    if (!_object.isJSONObject(value) && !_object.isJSONArray(value))
        return {};
    std::string text = toString(value);
    return text.find('}') == text.npos ? std::string() : text;
}

bool DocumentPath::hasContent(jobject value)
{
    if (_object.isJSONArray(value))
        return _array.size(value) > 0;
    if (!_object.isJSONObject(value))
        return false;
    const bool hasKeys = !_object.keySet(value).empty();
    _object.setObject(nullptr);
    return hasKeys;
}
