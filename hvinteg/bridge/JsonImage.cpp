#include "bridge/JsonImage.h"

#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JsonImageWriter.h"

namespace {
std::size_t lengthOf(JNIEnv* env, const LocalRef<>& array)
{
    return static_cast<std::size_t>(env->GetArrayLength(static_cast<jarray>(array.get())));
}

/// An image is a pair of arrays: numbers, and bytes that the numbers refer to.
LocalRef<> elementOf(JNIHvlAccessor& caller, const LocalRef<>& pair, jsize index)
{
    JNIEnv* const env = caller.getEnv();
    LocalRef<> element(env,
                       env->GetObjectArrayElement(static_cast<jobjectArray>(pair.get()), index));
    caller.exceptionCheck();
    return element;
}
} // namespace

JsonImage JsonImage::of(JNIHvlAccessor& caller, jobject value)
{
    JsonImage image;
    if (value != nullptr && !image.takeFrom(caller, value))
        JsonImageWriter(image._nodes, image._texts).write(value);
    return image;
}

/// Returns false if the engine has no class for images.
bool JsonImage::takeFrom(JNIHvlAccessor& caller, jobject value)
{
    jclass const type = caller.classNamed(JavaClassNames::JSONImage);
    caller.handleException(false);
    if (type == nullptr)
        return false;
    const LocalRef<> pair =
        JavaCall::ofStatic(caller, type, "of", "(Ljava/lang/Object;)[Ljava/lang/Object;")
            .object(value)
            .callStaticObject();
    if (!pair)
        return false;
    const LocalRef<> values = elementOf(caller, pair, 0);
    const LocalRef<> texts = elementOf(caller, pair, 1);
    if (!values || !texts)
        return false;
    JNIEnv* const env = caller.getEnv();
    // A node is two numbers: its head and its payload.
    _nodes.resize(lengthOf(env, values) / 2);
    env->GetLongArrayRegion(static_cast<jlongArray>(values.get()), 0,
                            static_cast<jsize>(2 * _nodes.size()),
                            reinterpret_cast<jlong*>(_nodes.data()));
    _texts.resize(lengthOf(env, texts));
    env->GetByteArrayRegion(static_cast<jbyteArray>(texts.get()), 0,
                            static_cast<jsize>(_texts.size()),
                            reinterpret_cast<jbyte*>(_texts.data()));
    caller.exceptionCheck();
    return true;
}

JsonValue JsonImage::root() const
{
    return _nodes.empty() ? JsonValue() : JsonValue(_nodes.data(), _texts.data());
}
