#include "render/DocumentPath.h"

#include "support/DottedPath.h"

LocalRef<> DocumentPath::get(jobject object, const std::string& key)
{
    LocalRef<> value;
    if (_object.isJSONObject(object)) {
        value = LocalRef<>(_object.getEnv(), _object.get(object, key.c_str()));
        _object.setObject(nullptr);
    }
    return value;
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
    std::string text = _object.toString(value);
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
