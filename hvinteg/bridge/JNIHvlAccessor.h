#pragma once

#include <string>
#include <vector>

#include "JNIAccessor.h"
#include "support/HvintegExport.h"

class JNIObjectManager;

/// Base of the wrappers of the engine's Java objects: tracks references and converts values.
///
/// A wrapper uses the environment that the manager has when the wrapper is created, on that thread.
/// It holds its object by one of two kinds of reference. A global reference belongs to the manager
/// and lives until JNIObjectManager::cleanJRef, even after the wrapper. A local reference belongs
/// to the wrapper and is deleted with it; a copy of the wrapper has its own.
///
/// Texts are UTF-8.
class HVINTEG_EXPORT JNIHvlAccessor : public JNIAccessor
{
public:
    /// Wraps nothing, in the manager's present environment.
    JNIHvlAccessor();
    /// Shares a global reference. Makes its own local reference on the wrapper's thread; on another
    /// thread the copy wraps nothing.
    JNIHvlAccessor(const JNIHvlAccessor& other);
    /// Deletes its local references, then copies as the constructor does.
    JNIHvlAccessor& operator=(const JNIHvlAccessor& other);
    /// Deletes the local references of this wrapper. Leaves them if the calling thread is another
    /// one or the attachment of their thread has ended.
    ~JNIHvlAccessor() override;

    /// Wraps an object and its class. With `global` the wrapper holds a new global reference, and
    /// the caller keeps `object`. Without, the wrapper takes over the local reference.
    void init(jobject object, bool global);
    /// Wraps a new object of the class, made by its constructor without arguments. If that fails,
    /// the error is recorded for getErrorMessage and nothing is wrapped.
    void init(const char* className, bool global);
    /// Without `global`, wraps `object`; the wrapper deletes this local reference if `track` is
    /// true. With `global`, wraps a new global reference to it, which the manager deletes if
    /// `track` is true.
    void setObjectG(jobject object, bool global, bool track);

    /// Creates a java.lang.String. Without `global` the caller owns the local reference, otherwise
    /// the global one; `track` is ignored. Throws JNIException.
    jobject newObject(const std::string& value, bool global, bool track);
    /// Creates a java.lang.String, or returns null for null. `track` gives the reference to an
    /// owner: a local one to the wrapper, a global one to the manager. Without it the caller owns
    /// the reference. Throws JNIException.
    jobject newObject(const char* value, bool global, bool track);
    /// Creates a java.lang.Integer. `track` gives the reference to the wrapper or, with `global`,
    /// to the manager; otherwise the caller owns it. Throws JNIException.
    jobject newObject(int value, bool global, bool track);
    /// Creates a java.lang.Double. `track` gives the reference to the wrapper or, with `global`, to
    /// the manager; otherwise the caller owns it. Throws JNIException.
    jobject newObject(double value, bool global, bool track);
    /// Creates a java.lang.Long. `track` gives the reference to the wrapper or, with `global`, to
    /// the manager; otherwise the caller owns it. Throws JNIException.
    jobject newObject(long long value, bool global, bool track);
    /// Creates a java.lang.Boolean. `track` gives the reference to the wrapper or, with `global`,
    /// to the manager; otherwise the caller owns it. Throws JNIException.
    jobject newObject(bool value, bool global, bool track);

    /// Converts a Java string; null becomes an empty text. A failure is recorded for
    /// getErrorMessage.
    std::string getString(jstring text);
    /// Replaces `out` by a Java string; null becomes an empty text. A failure is recorded for
    /// getErrorMessage.
    void getString(jstring text, std::string& out);

    /// The present manager of the process. Not cached, because a new one may replace it.
    JNIObjectManager* getJNIObjectManager() const;

private:
    HVINTEG_HIDDEN void keepLocal(jobject local);
    HVINTEG_HIDDEN void releaseLocals();
    HVINTEG_HIDDEN jobject finishNew(jobject local, bool global, bool track);

    std::vector<jobject> _localRefs;
};
