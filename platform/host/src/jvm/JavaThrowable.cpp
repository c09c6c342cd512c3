#include "JavaThrowable.h"

#include "JavaText.h"

namespace {
/// Calls that return null instead of leaving an exception pending.
class QuietCalls
{
public:
    explicit QuietCalls(JNIEnv* env) : _env(env) {}

    jobject call(jobject object, const char* className, const char* method, const char* signature)
    {
        const jclass type = withoutException(_env->FindClass(className));
        jobject result = nullptr;
        if (const jmethodID id = methodOf(type, method, signature);
            id != nullptr && object != nullptr)
            result = withoutException(_env->CallObjectMethodA(object, id, nullptr));
        _env->DeleteLocalRef(type);
        return result;
    }

    /// Creates an object with one argument.
    jobject make(const char* className, const char* signature, jobject argument)
    {
        const jclass type = withoutException(_env->FindClass(className));
        jvalue value{};
        value.l = argument;
        jobject result = nullptr;
        if (const jmethodID id = methodOf(type, "<init>", signature); id != nullptr)
            result = withoutException(_env->NewObjectA(type, id, &value));
        _env->DeleteLocalRef(type);
        return result;
    }

    /// Lets Java write the stack trace, with causes and common frames.
    void print(jthrowable exception, jobject writer)
    {
        const jclass type = withoutException(_env->FindClass("java/lang/Throwable"));
        jvalue value{};
        value.l = writer;
        const jmethodID id = methodOf(type, "printStackTrace", "(Ljava/io/PrintWriter;)V");
        if (id != nullptr && writer != nullptr && exception != nullptr) {
            _env->CallVoidMethodA(exception, id, &value);
            clearException();
        }
        _env->DeleteLocalRef(type);
    }

    /// Converts the Java string and releases it.
    std::string take(jobject string)
    {
        std::string result;
        if (string == nullptr)
            return result;
        const auto text = static_cast<jstring>(string);
        const char* bytes = withoutException(_env->GetStringUTFChars(text, nullptr));
        if (bytes != nullptr) {
            result = utf8FromJava(bytes);
            _env->ReleaseStringUTFChars(text, bytes);
        }
        _env->DeleteLocalRef(string);
        return result;
    }

    void drop(jobject reference) { _env->DeleteLocalRef(reference); }
    jclass classOf(jobject object)
    {
        return object == nullptr ? nullptr : withoutException(_env->GetObjectClass(object));
    }

private:
    jmethodID methodOf(jclass type, const char* name, const char* signature)
    {
        return type == nullptr ? nullptr
                               : withoutException(_env->GetMethodID(type, name, signature));
    }

    void clearException()
    {
        if (_env->ExceptionCheck() == JNI_TRUE)
            _env->ExceptionClear();
    }

    template <class Result>
    Result withoutException(Result result)
    {
        clearException();
        return result;
    }

    JNIEnv* _env;
};

std::string classNameOf(QuietCalls& calls, jthrowable exception)
{
    const jclass type = calls.classOf(exception);
    std::string name =
        calls.take(calls.call(type, "java/lang/Class", "getName", "()Ljava/lang/String;"));
    calls.drop(type);
    return name.empty() ? "java.lang.Throwable" : name;
}

/// As printStackTrace writes it; empty if that fails.
std::string traceOf(QuietCalls& calls, jthrowable exception)
{
    const jobject text = calls.make("java/io/StringWriter", "()V", nullptr);
    if (text == nullptr)
        return {};
    const jobject writer = calls.make("java/io/PrintWriter", "(Ljava/io/Writer;)V", text);
    calls.print(exception, writer);
    std::string trace =
        calls.take(calls.call(text, "java/io/StringWriter", "toString", "()Ljava/lang/String;"));
    calls.drop(writer);
    calls.drop(text);
    return trace;
}
} // namespace

JavaThrowable JavaThrowable::describe(JNIEnv* env, jthrowable exception, bool withTrace)
{
    QuietCalls calls(env);
    JavaThrowable result;
    result.className = classNameOf(calls, exception);
    result.message = calls.take(
        calls.call(exception, "java/lang/Throwable", "getMessage", "()Ljava/lang/String;"));
    if (result.message.empty())
        result.message = result.className;
    if (withTrace)
        result.trace = traceOf(calls, exception);
    return result;
}
