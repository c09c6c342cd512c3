#include "JNIAccessor.h"

#include "JNIException.h"
#include "JavaClasses.h"
#include "JavaText.h"
#include "JavaThread.h"
#include "JavaThrowable.h"
#include "VexaJVM.h"

JNIAccessor::JNIAccessor(JNIEnv* env) : _env(env), _attachment(JavaThread::attachment()) {}

JNIAccessor::JNIAccessor(const JNIAccessor& other)
    : _env(other._env), _attachment(other._attachment), _class(other._class),
      _method(other._method), _object(other._object), _errorMessage(other._errorMessage),
      _ownsClass(other._ownsClass)
{
    if (_ownsClass)
        _class = onOwnThread() ? static_cast<jclass>(_env->NewLocalRef(other._class)) : nullptr;
}

JNIAccessor& JNIAccessor::operator=(const JNIAccessor& other)
{
    if (this != &other) {
        JNIAccessor copy(other);
        std::swap(_env, copy._env);
        std::swap(_attachment, copy._attachment);
        std::swap(_class, copy._class);
        std::swap(_method, copy._method);
        std::swap(_object, copy._object);
        std::swap(_errorMessage, copy._errorMessage);
        std::swap(_ownsClass, copy._ownsClass);
    }
    return *this;
}

JNIAccessor::~JNIAccessor()
{
    releaseClass();
}

void JNIAccessor::releaseClass()
{
    if (_ownsClass && _class != nullptr && onOwnThread())
        _env->DeleteLocalRef(_class);
    _class = nullptr;
    _ownsClass = false;
}

void JNIAccessor::setEnv(JNIEnv* env)
{
    releaseClass();
    _env = env;
    _attachment = JavaThread::attachment();
}

jclass JNIAccessor::classNamed(const char* name)
{
    return JavaClasses::instance().find(_env, name);
}

jclass JNIAccessor::setClass(const char* name)
{
    releaseClass();
    _class = classNamed(name);
    return _class;
}

jclass JNIAccessor::setClassOf(jobject object)
{
    releaseClass();
    if (object != nullptr) {
        _class = _env->GetObjectClass(object);
        _ownsClass = true;
    }
    return _class;
}

jmethodID JNIAccessor::setMethod(const char* name, const char* signature)
{
    _method = _class == nullptr ? nullptr : _env->GetMethodID(_class, name, signature);
    return _method;
}

jmethodID JNIAccessor::setStaticMethod(const char* name, const char* signature)
{
    _method = _class == nullptr ? nullptr : _env->GetStaticMethodID(_class, name, signature);
    return _method;
}

void JNIAccessor::exceptionCheck()
{
    handleException(true);
}

void JNIAccessor::handleException(bool rethrow, jthrowable exception)
{
    if (_env == nullptr)
        return;
    // This test is the only cost of a successful call.
    const bool pending = _env->ExceptionCheck() == JNI_TRUE;
    const jthrowable own = pending && exception == nullptr ? _env->ExceptionOccurred() : nullptr;
    if (pending)
        _env->ExceptionClear();
    const jthrowable subject = exception == nullptr ? own : exception;
    if (subject == nullptr && !pending)
        return;
    const JavaThrowable text = JavaThrowable::describe(_env, subject, rethrow);
    _env->DeleteLocalRef(own);
    _errorMessage = text.message;
    if (rethrow)
        throw JNIException(text.className, text.message, text.trace);
}

jstring JNIAccessor::ToJString(const std::string& text)
{
    // Java's encoding differs from UTF-8 in NUL and above U+FFFF.
    if (isPlainText(text))
        return _env->NewStringUTF(text.c_str());
    const std::u16string units = utf16FromUtf8(text);
    return _env->NewString(reinterpret_cast<const jchar*>(units.data()),
                           static_cast<jsize>(units.size()));
}

std::string JNIAccessor::FromJString(jstring text, const char* charset)
{
    if (text == nullptr)
        return {};
    if (charset != nullptr)
        return bytesInCharset(text, charset);
    const char* bytes = _env->GetStringUTFChars(text, nullptr);
    if (bytes == nullptr)
        return {};
    std::string result = utf8FromJava(bytes);
    _env->ReleaseStringUTFChars(text, bytes);
    return result;
}

/// Lets Java convert, because it knows the charset by its own name. Returns an empty text with the
/// exception pending for an unknown charset.
std::string JNIAccessor::bytesInCharset(jstring text, const char* charset)
{
    std::string result;
    const jclass type = classNamed("java/lang/String");
    const jmethodID method =
        type == nullptr ? nullptr : _env->GetMethodID(type, "getBytes", "(Ljava/lang/String;)[B");
    const jstring name = method == nullptr ? nullptr : ToJString(charset);
    if (name == nullptr)
        return result;
    jvalue argument{};
    argument.l = name;
    const auto bytes = static_cast<jbyteArray>(_env->CallObjectMethodA(text, method, &argument));
    if (_env->ExceptionCheck() == JNI_FALSE && bytes != nullptr) {
        const jsize length = _env->GetArrayLength(bytes);
        result.resize(static_cast<std::size_t>(length));
        _env->GetByteArrayRegion(bytes, 0, length, reinterpret_cast<jbyte*>(result.data()));
    }
    _env->DeleteLocalRef(bytes);
    _env->DeleteLocalRef(name);
    return result;
}

bool JNIAccessor::onOwnThread() const
{
    JavaVM* machine = VexaJVM::GetInstance()->GetJavaVM();
    void* env = nullptr;
    return machine != nullptr && _env != nullptr && _attachment == JavaThread::attachment() &&
           machine->GetEnv(&env, JNI_VERSION_10) == JNI_OK && env == _env;
}
