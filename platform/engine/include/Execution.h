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
    /// Takes the job text. Nothing is read or written yet. An engine may throw at a text that it
    /// cannot take; the embedded one reports each fault of a text from execute, by onError.
    virtual void prepare(JNIEnv* env, const std::string& jobText) = 0;
    /// Hands in an input or output. The objects stay the caller's and must live until dispose.
    virtual void addInputContainer(JNIEnv* env, Container* container) = 0;
    virtual void addOutputContainer(JNIEnv* env, Container* container) = 0;
    /// The last argument is reserved and null. Throws Exception if another iterator has the name.
    virtual void addInputIterator(JNIEnv* env, RowDataIterator* iterator, void* reserved) = 0;
    /// Runs the job and blocks until it has ended with onSuccess, onError or onCancel.
    virtual void execute(JNIEnv* env, ExecutionListener* listener) = 0;
    /// Rows of a file that the job wrote, named without a directory. The execution owns the object
    /// and deletes it in dispose; the caller ends its use with RowDataIterator::dispose.
    virtual RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& fileName) = 0;
    /// Stops the job, which then ends with onCancel. Comes from any thread, with that thread's
    /// environment, at any moment from the return of prepare until dispose begins, and maybe on
    /// several threads at once. Before execute it ends the job as soon as that begins; when the job
    /// has ended it has no effect. The caller waits for its return before it calls dispose, unless
    /// the engine itself calls back into dispose from it.
    virtual void cancel(JNIEnv* env) = 0;
    /// Releases everything that the job held.
    virtual void dispose(JNIEnv* env) = 0;
    virtual ~Execution() = default;
};

/// Makes executions. It is the service manager's, and lives until the service is shut down.
/// Executions of the embedded engine may outlive it: they keep what they work on until dispose.
class ENGINE_API ExecutionService
{
public:
    /// A new execution on the heap; the caller disposes and deletes it. `locale`, as in "en_US", is
    /// the host's at this moment, for engines whose messages follow it; those of the embedded
    /// engine are English in every locale. Throws Exception.
    virtual Execution* createExecution(const std::string& locale) = 0;
    virtual ~ExecutionService() = default;
};

} // namespace EmbeddedHV
