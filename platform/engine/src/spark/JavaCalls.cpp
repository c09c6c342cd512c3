#include "spark/JavaCalls.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/Utf8.h"

namespace EmbeddedHV {
namespace {

/// Local references that one call of the client makes.
constexpr jint kReferences = 16;
constexpr char32_t kFirstPair = 0x10000;
constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kReplacement = 0xFFFD;

std::u16string utf16Of(std::string_view utf8)
{
    std::u16string units;
    units.reserve(utf8.size());
    while (!utf8.empty()) {
        const base::Character character = base::decodeCharacter(utf8);
        utf8.remove_prefix(character.length);
        const char32_t code = base::isStrayByte(character.code) ? kReplacement : character.code;
        if (code < kFirstPair) {
            units += static_cast<char16_t>(code);
            continue;
        }
        units += static_cast<char16_t>(kHighSurrogate + ((code - kFirstPair) >> 10U));
        units += static_cast<char16_t>(kLowSurrogate + ((code - kFirstPair) & 0x3FFU));
    }
    return units;
}

bool isHigh(char32_t unit)
{
    return unit >= kHighSurrogate && unit < kLowSurrogate;
}

bool isLow(char32_t unit)
{
    return unit >= kLowSurrogate && unit < 0xE000;
}

std::string utf8Of(std::u16string_view units)
{
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t code = units[i];
        if (isHigh(code) && i + 1 < units.size() && isLow(units[i + 1]))
            code = kFirstPair + ((code - kHighSurrogate) << 10U) + (units[++i] - kLowSurrogate);
        else if (isHigh(code) || isLow(code))
            code = kReplacement;
        base::appendCharacter(text, code);
    }
    return text;
}

} // namespace

JavaScope::JavaScope(JavaVM* machine) : _machine(machine)
{
    void* env = nullptr;
    if (_machine->GetEnv(&env, JNI_VERSION_1_8) != JNI_OK) {
        // A daemon, so that the thread does not keep the virtual machine alive.
        if (_machine->AttachCurrentThreadAsDaemon(&env, nullptr) != JNI_OK)
            throw JavaFailure("a thread cannot be attached to the Java virtual machine");
        _isAttachedHere = true;
    }
    _env = static_cast<JNIEnv*>(env);
    if (_env->PushLocalFrame(kReferences) == 0)
        return;
    _env->ExceptionClear();
    if (_isAttachedHere)
        _machine->DetachCurrentThread();
    throw JavaFailure("the Java virtual machine has not enough memory");
}

JavaScope::~JavaScope()
{
    _env->PopLocalFrame(nullptr);
    if (_isAttachedHere)
        _machine->DetachCurrentThread();
}

jstring JavaScope::text(const std::string& utf8) const
{
    const std::u16string units = utf16Of(utf8);
    const jstring text = _env->NewString(reinterpret_cast<const jchar*>(units.data()),
                                         static_cast<jsize>(units.size()));
    throwJavaException(*this);
    return text;
}

jobjectArray JavaScope::texts(const std::vector<std::string>& utf8) const
{
    const jclass type = _env->FindClass("java/lang/String");
    throwJavaException(*this);
    const jobjectArray list = _env->NewObjectArray(static_cast<jsize>(utf8.size()), type, nullptr);
    throwJavaException(*this);
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const jstring element = text(utf8[i]);
        _env->SetObjectArrayElement(list, static_cast<jsize>(i), element);
        _env->DeleteLocalRef(element); // the list may be long
    }
    return list;
}

std::string JavaScope::utf8(jobject text) const
{
    if (text == nullptr)
        return {};
    const auto string = static_cast<jstring>(text);
    std::u16string units(static_cast<std::size_t>(_env->GetStringLength(string)), u'\0');
    _env->GetStringRegion(string, 0, static_cast<jsize>(units.size()),
                          reinterpret_cast<jchar*>(units.data()));
    return utf8Of(units);
}

JavaObject::JavaObject(JavaVM* machine, const JavaScope& scope, jobject object) : _machine(machine)
{
    if (object == nullptr)
        return;
    _object = scope.env()->NewGlobalRef(object);
    if (_object == nullptr)
        throw JavaFailure("the Java virtual machine has not enough memory");
}

JavaObject::JavaObject(JavaObject&& other) noexcept
    : _machine(other._machine), _object(std::exchange(other._object, nullptr))
{
}

JavaObject& JavaObject::operator=(JavaObject&& other) noexcept
{
    std::swap(_machine, other._machine);
    std::swap(_object, other._object);
    return *this;
}

JavaObject::~JavaObject()
{
    if (_object == nullptr)
        return;
    try {
        const JavaScope scope(_machine);
        scope.env()->DeleteGlobalRef(_object);
    } catch (const JavaFailure&) {
        return; // the object stays as long as the virtual machine
    }
}

std::string takeJavaException(const JavaScope& scope)
{
    JNIEnv* const env = scope.env();
    const jthrowable thrown = env->ExceptionOccurred();
    if (thrown == nullptr)
        return {};
    env->ExceptionClear();
    const jclass type = env->FindClass("java/lang/Object");
    const jmethodID describe =
        type == nullptr ? nullptr : env->GetMethodID(type, "toString", "()Ljava/lang/String;");
    const jobject text =
        describe == nullptr ? nullptr : env->CallObjectMethodA(thrown, describe, nullptr);
    if (env->ExceptionCheck() == JNI_TRUE) {
        env->ExceptionClear();
        return "an exception of Java without a description";
    }
    return scope.utf8(text);
}

void throwJavaException(const JavaScope& scope)
{
    if (scope.env()->ExceptionCheck() == JNI_TRUE)
        throw JavaFailure(takeJavaException(scope));
}

} // namespace EmbeddedHV
