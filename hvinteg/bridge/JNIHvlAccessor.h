#pragma once

#include <string>
#include <vector>

#include "JNIAccessor.h"
#include "support/HvintegExport.h"

class JNIObjectManager;

/// Base of every wrapper of one of the engine's Java objects: reference tracking and conversions.
///
/// A wrapper works in the manager's environment of the time of its making, on that thread. Its
/// object is held in one of two ways. By a global reference, which is the manager's and lives until
/// JNIObjectManager::cleanJRef, longer than the wrapper. Or by a local reference, which is the
/// wrapper's and is deleted with it; a copy of such a wrapper has a local reference of its own.
///
/// Texts are UTF-8.
class HVINTEG_EXPORT JNIHvlAccessor : public JNIAccessor
{
public:
    /// Wraps nothing yet, in the manager's present environment.
    JNIHvlAccessor();
    JNIHvlAccessor(const JNIHvlAccessor& other);
    JNIHvlAccessor& operator=(const JNIHvlAccessor& other);
    /// Deletes the local references of this wrapper, unless the attachment of the thread that they
    /// belong to has ended, and they with it, or the calling thread is another one.
    ~JNIHvlAccessor() override;

    /// Wraps an object and takes its class. A local reference passes to the wrapper; with `global`
    /// it stays the caller's, and the wrapper gets a global one.
    void init(jobject object, bool global);
    /// Wraps a new object of the class, from its constructor without arguments. A failure is
    /// recorded for getErrorMessage, and nothing is wrapped.
    void init(const char* className, bool global);
    /// Wraps a new global reference to the object, which the manager deletes if `track` is set; or
    /// the local reference given, which the wrapper deletes if `track` is set.
    void setObjectG(jobject object, bool global, bool track);

    /// Makes a Java value: a String, Integer, Double, Long or Boolean. Without `global` the result
    /// is a local reference, the wrapper's if `track` is set, else the caller's. With `global` it
    /// is a global one, the manager's if `track` is set, else the caller's. A std::string is never
    /// tracked. Throws JNIException.
    jobject newObject(const std::string& value, bool global, bool track);
    jobject newObject(const char* value, bool global, bool track);
    jobject newObject(int value, bool global, bool track);
    jobject newObject(double value, bool global, bool track);
    jobject newObject(long long value, bool global, bool track);
    jobject newObject(bool value, bool global, bool track);

    /// The text of a Java string, empty for null. A failure is recorded for getErrorMessage.
    std::string getString(jstring text);
    void getString(jstring text, std::string& out);

    /// The manager of the process, asked anew at each call: a new one may have come.
    JNIObjectManager* getJNIObjectManager() const;

private:
    void keepLocal(jobject local);
    void releaseLocals();
    jobject finishNew(jobject local, bool global, bool track);

    std::vector<jobject> _localRefs;
};
