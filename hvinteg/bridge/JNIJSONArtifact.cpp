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

bool JNIJSONArtifact::isInstance(jobject object, const char* className)
{
    if (object == nullptr)
        return false;
    jclass const type = classNamed(className);
    exceptionCheck();
    return type != nullptr && getEnv()->IsInstanceOf(object, type) == JNI_TRUE;
}
