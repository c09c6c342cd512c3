#include "bridge/JNIJSONArtifact.h"

#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

JNIJSONArtifact::~JNIJSONArtifact() = default;

std::string JNIJSONArtifact::serialize()
{
    return JavaCall(*this, "serialize", "()Ljava/lang/String;").callText(getObject());
}

std::string JNIJSONArtifact::prettyPrint()
{
    return JavaCall(*this, "serialize", "(Z)Ljava/lang/String;").flag(true).callText(getObject());
}

bool JNIJSONArtifact::isJSONObject(jobject object)
{
    return isInstance(object, JavaClassNames::JSONObject);
}

bool JNIJSONArtifact::isJSONArray(jobject object)
{
    return isInstance(object, JavaClassNames::JSONArray);
}

bool JNIJSONArtifact::isString(jobject object)
{
    return isInstance(object, JavaClassNames::String);
}

void JNIJSONArtifact::parse(const char* className, const char* signature, const char* json)
{
    setClass(className);
    handleException(false);
    // Without a text the wrapper is a reader for objects of others.
    if (json == nullptr)
        return;
    const LocalRef<> parsed =
        JavaCall::ofStatic(*this, getClass(), "parse", signature, OnFailure::Record)
            .text(json)
            .callStaticObject();
    setObjectG(parsed.get(), true, true);
    handleException(false);
}

bool JNIJSONArtifact::isInstance(jobject object, const char* className)
{
    if (object == nullptr)
        return false;
    jclass const type = classNamed(className);
    exceptionCheck();
    return type != nullptr && getEnv()->IsInstanceOf(object, type) == JNI_TRUE;
}
