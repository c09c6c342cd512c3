#pragma once

#include <jni.h>

#include <memory>

#include "support/HvintegExport.h"

class JNIHvlAccessor;

/// Owns the Java references of the process and knows the JNI environment in use.
///
/// There is one manager per process. A JNIEnv belongs to one thread, so one thread at a time works
/// with Java; another thread first calls reAttachJVM. There is no lock.
///
/// The virtual machine belongs to the host. The manager starts it if necessary and attaches its
/// thread. It never stops or detaches it.
class HVINTEG_EXPORT JNIObjectManager
{
public:
    /// Releases everything as cleanJRef does.
    ~JNIObjectManager();
    JNIObjectManager(const JNIObjectManager&) = delete;
    JNIObjectManager& operator=(const JNIObjectManager&) = delete;

    /// Destroys an earlier manager with all its references and creates a new one, attached to the
    /// calling thread. Throws VexaJVMError if the machine cannot be started; then there is no
    /// manager.
    static JNIObjectManager* newManager();
    /// Returns the manager; creates it with newManager at the first call.
    static JNIObjectManager* getManager();
    /// Destroys the manager with all its references, if it exists.
    static void releaseManager();

    /// Attaches the calling thread and makes it the one that works with Java. Throws VexaJVMError.
    void reAttachJVM();
    /// The environment of the thread that attached last. Valid only on that thread.
    JNIEnv* getEnv() const;
    /// Creates a global reference; null for null. With `tracked`, cleanJRef deletes it, otherwise
    /// the caller must.
    jobject createGlobalRef(jobject object, bool tracked);
    /// Takes ownership of a wrapper: cleanJRef deletes it. Ignores null. Throws std::bad_alloc, and
    /// then deletes the wrapper at once.
    void addtoCleanList(JNIHvlAccessor* wrapper);
    /// Deletes the tracked global references, then the wrappers that it owns, each in the order of
    /// their creation. Wrappers that were created before must not be used afterwards. Call it on
    /// the thread of the wrappers.
    void cleanJRef();

private:
    struct HVINTEG_HIDDEN Data;

    HVINTEG_HIDDEN JNIObjectManager();

    static JNIObjectManager* _this;

    std::unique_ptr<Data> _data;
};
