#pragma once

#include <jni.h>

#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

class Container;
class ExecutionListener;
class RowDataIterator;

/// One job, from its text to its end. All calls come from one thread at a time; only cancel may
/// come from another thread. `env` is the environment of the calling thread. Every operation may
/// throw Exception or JavaException. The caller deletes the object after dispose.
class ENGINE_API Execution
{
public:
    /// Sets the job text, UTF-8. Nothing is read or written yet. An engine may throw if the text is
    /// invalid. The embedded engine reports every error of the text in execute, through onError.
    virtual void prepare(JNIEnv* env, const std::string& jobText) = 0;
    /// Adds a file that the job reads. The caller owns the container and keeps it until dispose.
    virtual void addInputContainer(JNIEnv* env, Container* container) = 0;
    /// Adds a file that the job writes. The caller owns the container and keeps it until dispose.
    virtual void addOutputContainer(JNIEnv* env, Container* container) = 0;
    /// Adds rows that the job reads by the name of the iterator. The caller owns the iterator and
    /// keeps it until dispose. `reserved` is null. Throws Exception if another iterator has the
    /// same name.
    virtual void addInputIterator(JNIEnv* env, RowDataIterator* iterator, void* reserved) = 0;
    /// Runs the job. Blocks until the job has ended with onSuccess, onError or onCancel. The caller
    /// owns the listener, which the engine uses only during the call.
    virtual void execute(JNIEnv* env, ExecutionListener* listener) = 0;
    /// The rows of a file that the job wrote. `fileName` is the name without a directory. The
    /// execution owns the iterator and deletes it in dispose; the caller calls
    /// RowDataIterator::dispose when it needs no more rows. Throws Exception if the job wrote no
    /// such file or the file cannot be read.
    virtual RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& fileName) = 0;
    /// Stops the job, which then ends with onCancel. Any thread may call it, with its own
    /// environment, from the return of prepare until dispose begins; several threads may call it at
    /// once. If it is called before execute, the job ends as soon as execute begins. After the end
    /// of the job it has no effect. The caller does not call dispose before cancel has returned,
    /// except from inside cancel itself.
    virtual void cancel(JNIEnv* env) = 0;
    /// Releases everything that the job holds. Afterwards only the destructor may be called.
    virtual void dispose(JNIEnv* env) = 0;
    /// The caller deletes the object, after dispose.
    virtual ~Execution() = default;
};

/// A message of a job: the text that the listener got, and its detail for host programs. The
/// embedded engine's detail is a JSON object with the parts of the message; docs/contracts.md
/// describes it. Another engine may give any text. Both are UTF-8.
struct ReportedMessage
{
    std::string text;   ///< as the listener got it
    std::string detail; ///< empty if there is nothing beyond the text
};

/// An interface that an execution may implement if its messages have details. Callers detect it
/// with dynamic_cast.
class ENGINE_API MessageReports
{
public:
    /// The messages of the job, in the order in which the listener got them. Empty before execute;
    /// valid until the execution is deleted. The thread that uses the execution calls it.
    virtual const std::vector<ReportedMessage>& reportedMessages() const = 0;

protected:
    /// Protected: the owner deletes the execution.
    ~MessageReports() = default;
};

/// Makes executions. The service manager owns it; it lives until the engine is shut down. An
/// execution of the embedded engine may live longer: it shares ownership of the resources that it
/// uses until dispose.
class ENGINE_API ExecutionService
{
public:
    /// Makes an execution on the heap. The caller disposes and deletes it. `locale` is the host's
    /// locale at this moment, for example "en_US", for engines that translate their messages. The
    /// messages of the embedded engine are always English. Throws Exception.
    virtual Execution* createExecution(const std::string& locale) = 0;
    /// The backend deletes the object.
    virtual ~ExecutionService() = default;
};

} // namespace EmbeddedHV
