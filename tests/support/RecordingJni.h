#pragma once

#include <jni.h>

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

/// The calls that our libraries and the test program make through JNI: counted, checked, and made
/// to fail at will. The machine's own code uses the same function table; its calls pass unseen.
///
/// The table of the running machine is replaced, for all its threads, and stays replaced.
class RecordingJni
{
public:
    /// How a call fails.
    enum class Fault
    {
        OutOfMemory,     ///< nothing returned, an OutOfMemoryError pending
        NothingReturned, ///< nothing returned and no exception, which JNI does not allow for
        Exception        ///< nothing returned, an IllegalStateException pending
    };

    /// One for the process, installed at first use. `withPendingCheck` reports calls made with an
    /// exception pending; the machine's checked mode does that itself, and asking would blind it.
    static RecordingJni& install(JavaVM* machine, bool withPendingCheck);

    /// Forgets the counts and the violations, ends fault injection, and takes the references that
    /// are alive now as the baseline.
    void restart();
    int count(const std::string& function) const;
    /// References made since the restart and not deleted. Global references to classes do not
    /// count: they are kept for good.
    int liveGlobals() const;
    int liveLocals() const;
    std::vector<std::string> violations() const;

    /// Makes the call with this number fail, counted from 1 over those that can; 0 counts only.
    void failAt(int number, Fault fault);
    /// Ends fault injection; returns whether the call was reached.
    bool endFault();
    /// The function of the call that failed last; empty for none since failAt.
    std::string_view failedFunction() const;
    /// The calls since failAt that can fail.
    int faultableCalls() const;

    // What the entries of the table use.
    struct Traits
    {
        const char* name;
        bool fails;
        bool allowedPending; ///< JNI allows it while an exception is pending
        int locals;          ///< 1: returns a local reference, -1: deletes one
        int globals;         ///< 1: returns a global reference, -1: deletes one
        bool returnsCode;    ///< a result code instead of a value
    };
    bool concerns(const void* caller) const;
    /// False: the call is to fail.
    bool before(JNIEnv* env, const Traits& traits);
    void made(JNIEnv* env, const Traits& traits, jobject result);
    void deleting(JNIEnv* env, const Traits& traits, jobject reference);
    const JNINativeInterface_& original() const { return _original; }

private:
    /// A piece of memory that holds the code of a library.
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
    int _calls = 0;
    int _failAt = 0;
    bool _failed = false;
    std::string_view _failedFunction;
    Fault _fault = Fault::OutOfMemory;
};
