#include "bridge/JNIJSONObject.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "support/DottedPath.h"

JNIJSONObject::JNIJSONObject()
{
    init(JavaClassNames::JSONObject, true);
}

JNIJSONObject::JNIJSONObject(const char* json)
{
    parse(JavaClassNames::JSONObject, "(Ljava/lang/String;)Lcom/zor/json/java/JSONObject;", json);
    _top = getObject();
    if (json != nullptr && !isGood())
        _parserError = getErrorMessage();
}

JNIJSONObject::~JNIJSONObject() = default;

/// Calls java.util.Map's put for all overloads. The returned previous value is released at once.
template <class Value>
void JNIJSONObject::putValue(const std::string& key, Value value)
{
    JavaCall(*this, "put", "(Ljava/lang/Object;Ljava/lang/Object;)Ljava/lang/Object;")
        .text(key)
        .value(value)
        .callObject(getObject());
}

void JNIJSONObject::put(const std::string& key, int value)
{
    putValue(key, value);
}

void JNIJSONObject::put(const std::string& key, double value)
{
    putValue(key, value);
}

void JNIJSONObject::put(const std::string& key, long long value)
{
    putValue(key, value);
}

void JNIJSONObject::put(const std::string& key, bool value)
{
    putValue(key, value);
}

void JNIJSONObject::put(const std::string& key, const char* value)
{
    putValue(key, value);
}

void JNIJSONObject::put(const std::string& key, JNIJSONObject* value)
{
    putValue<const JNIHvlAccessor*>(key, value);
}

void JNIJSONObject::put(const std::string& key, JNIJSONArray* value)
{
    putValue<const JNIHvlAccessor*>(key, value);
}

void JNIJSONObject::putNull(const std::string& key)
{
    putValue<const JNIHvlAccessor*>(key, nullptr);
}

jobject JNIJSONObject::get(jobject object, const char* key)
{
    setObject(object);
    handleException(false);
    JavaCall call(*this, "get", "(Ljava/lang/Object;)Ljava/lang/Object;", OnFailure::Record);
    if (key == nullptr)
        call.object(nullptr);
    else
        call.text(key);
    return call.callObject(object).release();
}

jobject JNIJSONObject::getByPath(jobject object, const std::string& path)
{
    const std::vector<std::string> pieces = segmentsOf(path);
    if (object == nullptr || pieces.empty())
        return nullptr;
    LocalRef<> result(getEnv(), get(object, pieces.front().c_str()));
    for (std::size_t index = 1; index < pieces.size() && result; ++index) {
        LocalRef<> child;
        if (isJSONObject(result.get()))
            child = LocalRef<>(getEnv(), get(result.get(), pieces[index].c_str()));
        result = std::move(child);
    }
    // The objects on the path are released, so none of them may remain wrapped.
    setObject(object);
    return result.release();
}

std::string JNIJSONObject::getChildAsString(jobject object, const char* key)
{
    const LocalRef<> value(getEnv(), get(object, key));
    if (!value)
        return {};
    return isString(value.get()) ? getString(static_cast<jstring>(value.get()))
                                 : toString(value.get());
}

std::set<std::string> JNIJSONObject::keySet()
{
    return keySet(getObject());
}

std::set<std::string> JNIJSONObject::keySet(jobject object)
{
    std::set<std::string> keys;
    const LocalRef<> set =
        JavaCall(*this, "keySet", "()Ljava/util/Set;", OnFailure::Record).callObject(object);
    JavaCollections::forEachOf(*this, set.get(), OnFailure::Record, [&](LocalRef<> key) {
        keys.insert(getString(static_cast<jstring>(key.get())));
    });
    return keys;
}

std::string JNIJSONObject::toString()
{
    return toString(getObject());
}

std::string JNIJSONObject::toString(jobject object)
{
    return JavaCall(*this, classNamed("java/lang/Object"), "toString", "()Ljava/lang/String;")
        .callText(object);
}
