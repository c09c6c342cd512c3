#pragma once

#include <jni.h>

#include <memory>

#include "support/HvintegExport.h"

class JNIHvlAccessor;

/// What a step of work holds on the Java side, and the environment that it works in.
///
/// There is one manager for the process. A JNIEnv belongs to one thread, so all work with Java is
/// done by one thread at a time; a thread that takes over calls reAttachJVM first. Nothing here is
/// locked.
///
/// The machine belongs to the host. The manager starts it if need be, attaches its thread, and
/// never stops or detaches.
class HVINTEG_EXPORT JNIObjectManager
{
public:
    ~JNIObjectManager();
    JNIObjectManager(const JNIObjectManager&) = delete;
    JNIObjectManager& operator=(const JNIObjectManager&) = delete;

    /// A fresh manager, attached on the calling thread; an earlier one is destroyed with all that
    /// it holds. Throws VexaJVMError if there is no machine; then there is no manager.
    static JNIObjectManager* newManager();
    /// The manager, made if there is none.
    static JNIObjectManager* getManager();
    /// Destroys the manager with all that it holds; does nothing if there is none.
    static void releaseManager();

    /// Makes the calling thread the one that works with Java. Throws VexaJVMError.
    void reAttachJVM();
    /// The environment of the thread that attached last.
    JNIEnv* getEnv() const;
    /// A global reference to the object, null for null; a tracked one is deleted by cleanJRef, any
    /// other is the caller's to delete.
    jobject createGlobalRef(jobject object, bool tracked);
    /// Takes the wrapper over: cleanJRef deletes it, or this does if it throws std::bad_alloc. Null
    /// is passed over.
    void addtoCleanList(JNIHvlAccessor* wrapper);
    /// Deletes the tracked global references and the wrappers of the clean list, in the order in
    /// which they came. No wrapper made before may be used afterwards. On the wrappers' thread.
    void cleanJRef();

private:
    struct HVINTEG_HIDDEN Data;

    JNIObjectManager();

    static JNIObjectManager* _this;

    std::unique_ptr<Data> _data;
};
