#include "bridge/JNIHvlExpression.h"

#include <array>

#include "bridge/JNIHvlType.h"
#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

namespace {
constexpr std::array<const char*, 10> TypeNames = {"Any",  "Number", "String", "Int",  "Real",
                                                   "Char", "Bool",   "Time",   "Date", "Timestamp"};

/// The name of the Java constant. Callers cast numbers to the enumeration, so any value may occur.
const char* nameOf(JNIHvlExpression::SimpleTypes type)
{
    const int index = type;
    return index >= 0 && index < static_cast<int>(TypeNames.size())
               ? TypeNames[static_cast<std::size_t>(index)]
               : TypeNames.front();
}
} // namespace

JNIHvlExpression::JNIHvlExpression(jobject object)
{
    init(object, false);
}

JNIHvlExpression::~JNIHvlExpression() = default;

std::string JNIHvlExpression::generate()
{
    return JavaCall(*this, "generate", "()Ljava/lang/String;").callText(getObject());
}

jobject JNIHvlExpression::newObject(JNIEnv* env, SimpleTypes type)
{
    const LocalRef<jclass> types(env, env->FindClass(JavaClassNames::SimpleTypes));
    jfieldID const field =
        !types ? nullptr
               : env->GetStaticFieldID(types.get(), nameOf(type),
                                       "Lcom/vexa/ae/hvlhelpers/HvlExpression$SimpleTypes;");
    return field == nullptr ? nullptr : env->GetStaticObjectField(types.get(), field);
}

JNIHvlExpression::LambdaSignature::LambdaSignature(const std::string& name, JNIHvlType* type)
    : _name(name), _type(type)
{
    setClass(JavaClassNames::LambdaSignature);
    JavaCall(*this, "<init>", "(Ljava/lang/String;Lcom/vexa/ae/hvlhelpers/HvlType;)V",
             OnFailure::Record)
        .text(name)
        .wrapped(type)
        .constructWrapped();
}

JNIHvlExpression::LambdaSignature::~LambdaSignature() = default;
