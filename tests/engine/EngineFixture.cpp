#include "engine/EngineFixture.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <thread>

#include <minizip/unzip.h>
#include <unistd.h>

#include "EngineBackend.h"
#include "datafile/FaultJson.h"
#include "engine/ClusterMachine.h"
#include "support/ProcessorClock.h"

using namespace EmbeddedHV;

namespace EngineTest {

void RecordingListener::enter()
{
    const std::unique_lock lock(*_busy, std::try_to_lock);
    EXPECT_TRUE(lock) << "two callbacks at a time";
    EXPECT_FALSE(executionId.empty()) << "a callback before onInit";
    EXPECT_TRUE(ending.empty()) << "a callback after the last one";
    if (onCall)
        onCall();
}

void RecordingListener::end(const std::string& how)
{
    EXPECT_FALSE(executionId.empty());
    EXPECT_TRUE(ending.empty()) << "a second last callback";
    ending = how;
}

void RecordingListener::onError(const std::string& id, const std::string& text,
                                const std::string& detail)
{
    end("error");
    errorId = id;
    errorText = text;
    errorDetail = detail;
}

void RecordingListener::onInit(const std::string& id)
{
    EXPECT_TRUE(executionId.empty());
    executionId = id;
}

void RecordingListener::onMessage(const std::string&)
{
    ADD_FAILURE() << "a message without an id for a listener that takes ids";
}

void RecordingListener::onMessage(const std::string& id, const std::string& text)
{
    enter();
    messages.emplace_back(id, text);
}

void RecordingListener::onProgress(float fraction)
{
    enter();
    EXPECT_GE(fraction, progress.empty() ? 0.0F : progress.back());
    EXPECT_LE(fraction, 1.0F);
    progress.push_back(fraction);
}

std::string EngineFixture::root()
{
    /// Made before the service and so removed after it.
    struct Folder
    {
        Folder() : name(std::filesystem::temp_directory_path().string() + "/hvengine-XXXXXX")
        {
            mkdtemp(name.data());
        }
        Folder(const Folder&) = delete;
        Folder& operator=(const Folder&) = delete;
        ~Folder()
        {
            std::error_code ignored;
            std::filesystem::remove_all(name, ignored);
        }
        std::string name;
    };
    static const Folder folder;
    return folder.name;
}

HVServiceManager& EngineFixture::service()
{
    static const auto manager = [] {
        std::string hostForm = root() + "/analytic-root/";
        std::replace(hostForm.begin(), hostForm.end(), '/', '\\');
        const char* const components = std::getenv("HV_TEST_COMPONENTS");
        EHVAppSetting settings(hostForm, components ? components : "", "en_US");
        settings.addProperty("ae.temp.path", root() + "/ae");
        settings.addProperty("af.temp.path", root() + "/af");
        settings.addProperty("mmr.threads", "2");
        if (clusterUrl().empty())
            return std::make_unique<HVServiceManager>(nullptr, settings);
        settings.addProperty(kBackendSetting, "spark");
        settings.addProperty(kUrlSetting, clusterUrl());
        settings.addProperty(kScratchSetting, std::getenv("HV_TEST_ENGINE_SCRATCH"));
        return std::make_unique<HVServiceManager>(clusterMachine(), settings);
    }();
    return *manager;
}

EngineFixture::EngineFixture()
{
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    _folder = root() + "/" + test->name();
    std::filesystem::create_directories(_folder);
}

EngineFixture::~EngineFixture()
{
    std::error_code ignored;
    std::filesystem::permissions(_folder, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(_folder, ignored);
}

std::string EngineFixture::expanded(std::string job) const
{
    const std::string mark = "$DIR";
    for (auto at = job.find(mark); at != std::string::npos; at = job.find(mark, at))
        job.replace(at, mark.size(), "file:///" + _folder);
    return job;
}

std::unique_ptr<Execution> EngineFixture::newExecution(const std::string& job)
{
    std::unique_ptr<Execution> execution(service().getExecutionService()->createExecution("en_US"));
    execution->prepare(nullptr, expanded(job));
    return execution;
}

namespace {

/// The first group of the pattern in a text; empty if the text does not match.
std::string found(const std::string& text, const char* pattern)
{
    std::smatch match;
    return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

/// What an error or a message names is also among its parts.
void expectParts(const std::string& id, const std::string& text, const std::string& detail)
{
    const auto report = datafile::faultReportIn(detail);
    ASSERT_TRUE(report) << text << detail;
    const datafile::FaultParts& parts = report->parts;
    EXPECT_EQ(sentenceOf(parts), text);
    EXPECT_EQ(found(detail, "\"id\":\"(.*?)\""), id);
    // An error with a place in the job may name the step in its sentence.
    if (parts.inJob.line == 0) {
        EXPECT_EQ(found(parts.what, "^([A-Za-z]+(:[A-Za-z]+)?): "), "") << "a step in " << text;
    }
    EXPECT_EQ(found(text, "^[A-Za-z:]+: the setting \"([^\"]*)\""), parts.setting) << text;
    if (const std::string record = found(text, "record ([0-9]+)"); !record.empty()) {
        EXPECT_EQ(record, std::to_string(parts.record)) << text;
    }
}

} // namespace

RecordingListener EngineFixture::run(const std::string& job, const Setup& setup)
{
    const auto execution = newExecution(job);
    if (setup)
        setup(*execution);
    RecordingListener listener;
    execution->execute(nullptr, &listener);
    if (listener.ending == "error")
        expectParts(listener.errorId, listener.errorText, listener.errorDetail);
    listener.reports = dynamic_cast<MessageReports&>(*execution).reportedMessages();
    EXPECT_EQ(listener.reports.size(), listener.messages.size());
    for (std::size_t i = 0; i < std::min(listener.reports.size(), listener.messages.size()); ++i) {
        EXPECT_EQ(listener.reports[i].text, listener.messages[i].second);
        expectParts(listener.messages[i].first, listener.reports[i].text,
                    listener.reports[i].detail);
    }
    execution->dispose(nullptr);
    EXPECT_FALSE(listener.ending.empty());
    return listener;
}

RecordingListener EngineFixture::succeeded(RecordingListener listener)
{
    EXPECT_EQ(listener.ending, "success") << listener.fault();
    return listener;
}

std::chrono::milliseconds EngineFixture::cancelAfter(std::chrono::milliseconds delay,
                                                     const std::string& job,
                                                     RecordingListener& listener,
                                                     const Setup& setup)
{
    const auto execution = newExecution(job);
    if (setup)
        setup(*execution);
    ProcessorClock::time_point cancelled;
    std::chrono::steady_clock::time_point moment;
    std::thread canceller([&] {
        std::this_thread::sleep_for(delay);
        cancelled = ProcessorClock::now();
        moment = std::chrono::steady_clock::now();
        execution->cancel(nullptr);
    });
    execution->execute(nullptr, &listener);
    const ProcessorClock::time_point end = ProcessorClock::now();
    canceller.join();
    EXPECT_LT(std::chrono::steady_clock::now() - moment, kLongestStop);
    execution->dispose(nullptr);
    return std::chrono::duration_cast<std::chrono::milliseconds>(end - cancelled);
}

RecordingListener EngineFixture::feed(RowDataIterator& rows, const std::string& job)
{
    return run(job, [&rows](Execution& execution) {
        execution.addInputIterator(nullptr, &rows, nullptr);
    });
}

std::string EngineFixture::through(const std::string& csv, const std::string& steps)
{
    write("in.csv", csv);
    std::filesystem::remove(path("out.csv"));
    const RecordingListener listener =
        run(readCsv("in.csv") + " -> " + steps + " -> " + writeCsv("out.csv"));
    return listener.ending == "success" ? read("out.csv") : listener.fault();
}

void EngineFixture::write(const std::string& name, const std::string& content) const
{
    std::ofstream(path(name), std::ios::binary) << content;
}

std::string EngineFixture::read(const std::string& name) const
{
    std::ifstream file(path(name), std::ios::binary);
    EXPECT_TRUE(file) << name << " is missing";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string EngineFixture::member(const std::string& archive, const char* name) const
{
    const std::unique_ptr<void, decltype(&unzClose)> zip(unzOpen(path(archive).c_str()), unzClose);
    unz_file_info info = {};
    if (!zip || unzLocateFile(zip.get(), name, 1) != UNZ_OK ||
        unzGetCurrentFileInfo(zip.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK ||
        unzOpenCurrentFile(zip.get()) != UNZ_OK)
        return "no member";
    std::string text(info.uncompressed_size, ' ');
    unzReadCurrentFile(zip.get(), text.data(), static_cast<unsigned>(text.size()));
    return unzCloseCurrentFile(zip.get()) == UNZ_OK ? text : "damaged";
}

std::vector<std::string> EngineFixture::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(_folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string readFile(const std::string& name, const std::string& parser, const std::string& source,
                     const std::string& more)
{
    return R"(read({"filesystem": {"locations": [{"path": "$DIR/)" + name + R"(", "parser": )" +
           parser + "}]" + source + "}" + more + "})";
}

std::string readCsv(const std::string& name, const std::string& more, const std::string& source)
{
    return readFile(name, R"({"name": "csv", "config": {"hasHeader": true}})", source, more);
}

std::string writeCsv(const std::string& name)
{
    return R"(write({"dataDestination": "$DIR/)" + name +
           R"(", "dataModelDestination": "", "type": "text/csv"}))";
}

std::string numbers(int count)
{
    std::string csv = "n\n";
    for (int i = 0; i < count; ++i)
        csv += std::to_string(i) + "\n";
    return csv;
}

std::string onesThen(const std::string& last)
{
    std::string csv = "x\n";
    for (int i = 0; i < 30000; ++i)
        csv += "1\n";
    return csv + last + "\n";
}

} // namespace EngineTest
