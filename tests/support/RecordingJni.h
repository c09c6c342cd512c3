#pragma once

#include <jni.h>

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

/// Counts and checks the JNI calls of our libraries and the test program, and makes them fail on
/// request. Calls of the virtual machine's own code, which uses the same function table, are
/// ignored.
///
/// It replaces the table of the running virtual machine, for all threads and permanently.
class RecordingJni
{
public:
    /// How a call fails.
    enum class Fault
    {
        OutOfMemory,     ///< returns null or 0, with a pending OutOfMemoryError
        NothingReturned, ///< returns null or 0 without an exception, which JNI does not allow
        Exception        ///< returns null or 0, with a pending IllegalStateException
    };

    /// The only instance of the process; the first call installs it. With `withPendingCheck` it
    /// reports calls that are made with a pending exception. The virtual machine's checked mode
    /// does that itself, and the extra check would hide its reports.
    static RecordingJni& install(JavaVM* machine, bool withPendingCheck);

    /// Clears the counts and violations, ends fault injection, and makes the current references the
    /// baseline.
    void restart();
    int count(const std::string& function) const;
    /// Global references made since the restart and not deleted, without those to classes, which
    /// are kept permanently.
    int liveGlobals() const;
    /// Local references made since the restart and not deleted.
    int liveLocals() const;
    /// The most of them at one time.
    int mostLocals() const;
    /// Texts that the machine lent since the restart and did not get back.
    int lentTexts() const;
    std::vector<std::string> violations() const;

    /// Makes the call with this number fail. Only calls that can fail are counted, from 1. 0 only
    /// counts.
    void failAt(int number, Fault fault);
    /// Ends fault injection. Returns whether the call was reached.
    bool endFault();
    /// The function of the last failed call; empty if none has failed since failAt.
    std::string_view failedFunction() const;
    /// The number of calls since failAt that can fail.
    int faultableCalls() const;

    // Used by the entries of the table.
    struct Traits
    {
        const char* name;
        bool fails;
        bool allowedPending; ///< allowed by JNI while an exception is pending
        int locals;          ///< 1: returns a local reference, -1: deletes one
        int globals;         ///< 1: returns a global reference, -1: deletes one
        bool returnsCode;    ///< returns a result code instead of a value
    };
    bool concerns(const void* caller) const;
    /// Returns false if the call must fail.
    bool before(JNIEnv* env, const Traits& traits);
    void made(JNIEnv* env, const Traits& traits, jobject result);
    void deleting(JNIEnv* env, const Traits& traits, jobject reference);
    void lent(int texts);
    const JNINativeInterface_& original() const { return _original; }

private:
    /// A memory range with the code of a library.
    struct Code
    {
        const char* begin;
        const char* end;
    };

    RecordingJni(JavaVM* machine, bool withPendingCheck);
    void replaceTable(JavaVM* machine);
    bool isClass(JNIEnv* env, jobject object) const;
    jclass keptClass(JNIEnv* env, const char* name);

    mutable std::mutex _mutex;
    JNINativeInterface_ _original{};
    bool _withPendingCheck;
    std::vector<Code> _ours;
    jclass _classClass = nullptr;
    jclass _outOfMemory = nullptr;
    jclass _exception = nullptr;
    std::map<std::string_view, int> _counts;
    std::vector<std::string> _violations;
    int _liveGlobals = 0;
    int _liveLocals = 0;
    int _mostLocals = 0;
    int _lentTexts = 0;
    int _calls = 0;
    int _failAt = 0;
    bool _failed = false;
    std::string_view _failedFunction;
    Fault _fault = Fault::OutOfMemory;
};
