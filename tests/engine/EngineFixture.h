#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Container.h"
#include "EHVAppSetting.h"
#include "Execution.h"
#include "ExecutionListener.h"
#include "HVServiceManager.h"
#include "RowDataIterator.h"

namespace EngineTest {

/// Keeps what the engine says, and checks the rules of the conversation: onInit first, one call at
/// a time, one last callback.
class RecordingListener : public EmbeddedHV::ExtendedExecutionListener
{
public:
    void onCancel() override { end("cancel"); }
    void onError(const std::string& id, const std::string& text,
                 const std::string& detail) override;
    void onInit(const std::string& executionId) override;
    void onMessage(const std::string& text) override;
    void onMessage(const std::string& id, const std::string& text) override;
    void onProgress(float fraction) override;
    void onSuccess() override { end("success"); }

    std::string ending; ///< "success", "error" or "cancel"
    std::string errorId;
    std::string errorText;
    std::string errorDetail;
    std::string executionId;
    std::vector<std::pair<std::string, std::string>> messages;
    std::vector<EmbeddedHV::ReportedMessage> reports; ///< after the job
    std::vector<float> progress;
    /// The error as users see it: its id, a blank and its text.
    std::string fault() const { return errorId + " " + errorText; }
    /// Called at each progress report and each message.
    std::function<void()> onCall;

private:
    void enter();
    void end(const std::string& how);
    std::shared_ptr<std::mutex> _busy = std::make_shared<std::mutex>();
};

/// One service for the test program, as a process has; a folder of its own for each test.
class EngineFixture : public testing::Test
{
protected:
    EngineFixture();
    ~EngineFixture() override;

    using Setup = std::function<void(EmbeddedHV::Execution&)>;
    /// Runs a job in the test's folder: "$DIR" in the text is the folder's URL.
    RecordingListener run(const std::string& job, const Setup& setup = {});
    /// What came of a job, which must have succeeded.
    static RecordingListener succeeded(RecordingListener listener);
    /// Runs a job with rows for a read step to take by their name.
    RecordingListener feed(EmbeddedHV::RowDataIterator& rows, const std::string& job);
    /// A job that reads a CSV text, goes through steps and writes CSV: what it writes, or its
    /// fault.
    std::string through(const std::string& csv, const std::string& steps);

    /// Runs a job and cancels it from another thread after a while. Returns the processor
    /// time from the cancel to the end.
    std::chrono::milliseconds cancelAfter(std::chrono::milliseconds delay, const std::string& job,
                                          RecordingListener& listener, const Setup& setup = {});

    std::unique_ptr<EmbeddedHV::Execution> newExecution(const std::string& job);
    std::string expanded(std::string job) const;
    std::string path(const std::string& name) const { return _folder + "/" + name; }
    void write(const std::string& name, const std::string& content) const;
    std::string read(const std::string& name) const;
    /// The text of a member of a zip archive; "no member" or "damaged" if it cannot be had.
    std::string member(const std::string& archive, const char* name) const;
    /// The names in the test's folder, hidden ones too, in order.
    std::vector<std::string> files() const;

    static EmbeddedHV::HVServiceManager& service();
    static std::string root();

private:
    std::string _folder;
};

/// A named file of the test.
class NamedFile : public EmbeddedHV::Container
{
public:
    NamedFile(std::string name, std::string path) : _name(std::move(name)), _path(std::move(path))
    {
    }
    std::string getName() const override { return _name; }
    std::string getAbsolutePath() const override { return _path; }

private:
    std::string _name;
    std::string _path;
};

/// A read step for a file of the test's folder; `source` is added to its location, `more` beside
/// it.
std::string readFile(const std::string& name, const std::string& parser,
                     const std::string& source = "", const std::string& more = "");
/// The same for a CSV file with a header, and a write step for one.
std::string readCsv(const std::string& name, const std::string& more = "",
                    const std::string& source = "");
std::string writeCsv(const std::string& name);
/// Goes with the source of a read step.
inline const std::string kWithModel = R"(, "dataModel": "$DIR/m.xml")";

/// A CSV text of one column: the numbers from 0 on.
std::string numbers(int count);
/// One of ones that ends in a value which no reader meets before the job runs.
std::string onesThen(const std::string& last);

} // namespace EngineTest
