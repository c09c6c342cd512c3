#pragma once

#include <jni.h>

#include <utility>

/// Owns a local reference and deletes it at the end of its scope, so that a thread which never
/// returns to Java accumulates none. Use it only on the thread of its environment.
template <class Reference = jobject>
class LocalRef
{
public:
    LocalRef() = default;
    LocalRef(JNIEnv* env, Reference reference) : _env(env), _reference(reference) {}
    LocalRef(LocalRef&& other) noexcept : _env(other._env), _reference(other.release()) {}
    LocalRef& operator=(LocalRef&& other) noexcept
    {
        std::swap(_env, other._env);
        std::swap(_reference, other._reference);
        return *this;
    }
    ~LocalRef()
    {
        if (_reference != nullptr)
            _env->DeleteLocalRef(_reference);
    }

    Reference get() const { return _reference; }
    /// Passes ownership to the caller.
    Reference release() { return std::exchange(_reference, nullptr); }
    explicit operator bool() const { return _reference != nullptr; }

private:
    JNIEnv* _env = nullptr;
    Reference _reference = nullptr;
};
