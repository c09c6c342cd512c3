#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Execution.h"
#include "JobError.h"
#include "runtime/Cancellation.h"
#include "runtime/RowFile.h"
#include "service/EngineResources.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

class Reporter;

/// A job on the embedded engine. One thread at a time may use it; cancel may come from any thread
/// until the object is deleted. It shares ownership of its resources with the service.
class LocalExecution : public Execution, public MessageReports
{
public:
    /// Throws duck::QueryError if the database cannot make a connection.
    explicit LocalExecution(std::shared_ptr<EngineResources> resources);
    ~LocalExecution() override;

    void prepare(JNIEnv* env, const std::string& jobText) override;
    void addInputContainer(JNIEnv* env, Container* container) override;
    void addOutputContainer(JNIEnv* env, Container* container) override;
    void addInputIterator(JNIEnv* env, RowDataIterator* iterator, void* reserved) override;
    void execute(JNIEnv* env, ExecutionListener* listener) override;
    RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& fileName) override;
    void cancel(JNIEnv* env) override;
    void dispose(JNIEnv* env) override;
    const std::vector<ReportedMessage>& reportedMessages() const override { return _messages; }

private:
    /// Which callback ends a job.
    enum class Ending
    {
        Success,
        Cancelled,
        Error
    };
    JobContext& context();
    Ending run(Reporter& reporter, std::optional<JobError>& fault);
    void release();

    Cancellation _cancellation;
    std::shared_ptr<EngineResources> _resources; ///< outlives the context, which borrows from it
    std::optional<JobContext> _context;          ///< empty after dispose
    std::string _jobText;
    std::vector<ReportedMessage> _messages;
    std::vector<std::unique_ptr<RowFile>> _outputs;
};

} // namespace EmbeddedHV
