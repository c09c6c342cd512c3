#pragma once

#include <jni.h>

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

class Container;
class ExecutionListener;
class RowDataIterator;

/// One job, from its text to its end. Every operation takes the caller's environment and may throw
/// Exception or JavaException. The caller deletes the object after dispose.
class ENGINE_API Execution
{
public:
    /// Takes the job text. Nothing is read or written yet; a fault in the text is reported by
    /// execute, like every other fault of the job.
    virtual void prepare(JNIEnv* env, const std::string& jobText) = 0;
    /// Hands in an input or output. The objects stay the caller's and must live until dispose.
    virtual void addInputContainer(JNIEnv* env, Container* container) = 0;
    virtual void addOutputContainer(JNIEnv* env, Container* container) = 0;
    /// The last argument is reserved and null.
    virtual void addInputIterator(JNIEnv* env, RowDataIterator* iterator, void* reserved) = 0;
    /// Runs the job and blocks until it has ended with onSuccess, onError or onCancel.
    virtual void execute(JNIEnv* env, ExecutionListener* listener) = 0;
    /// Rows of a file that the job wrote, named without a directory. The execution owns the object
    /// and deletes it in dispose; the caller ends its use with RowDataIterator::dispose.
    virtual RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& fileName) = 0;
    /// Stops a running job. May come from another thread, with that thread's environment.
    virtual void cancel(JNIEnv* env) = 0;
    /// Releases everything that the job held.
    virtual void dispose(JNIEnv* env) = 0;
    virtual ~Execution() = default;
};

/// Makes executions. It is the service manager's, and lives until the service is shut down.
class ENGINE_API ExecutionService
{
public:
    /// A new execution on the heap; the caller disposes and deletes it. Messages and texts follow
    /// the locale, as in "en_US".
    virtual Execution* createExecution(const std::string& locale) = 0;
    virtual ~ExecutionService() = default;
};

} // namespace EmbeddedHV
