#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "EHVAppSetting.h"
#include "Execution.h"
#include "ExecutionListener.h"
#include "HVServiceManager.h"
#include "engine/TestRows.h"

// Two jobs at a time, whose rows count in one plain number: a race below the database's calls into
// our code, which the thread sanitizer must report. With the word "none" each has a number of its
// own, and nothing may be reported.

namespace {

class SilentListener : public EmbeddedHV::ExtendedExecutionListener
{
public:
    void onCancel() override {}
    void onError(const std::string&, const std::string& text, const std::string&) override
    {
        std::cout << "the job failed: " << text << '\n';
    }
    void onInit(const std::string&) override {}
    void onMessage(const std::string&) override {}
    void onMessage(const std::string&, const std::string&) override {}
    void onProgress(float) override {}
    void onSuccess() override {}
};

void runJob(EmbeddedHV::HVServiceManager& service, const std::string& output, long& counter)
{
    constexpr std::size_t kRecords = 5000;
    EngineTest::TestRows rows(
        "rows", {{"v", "real"}},
        std::vector<std::vector<EngineTest::TestRows::Value>>(kRecords, {1.0}));
    rows.beforeRecord = [&](std::size_t) {
        // So that both jobs read rows at the same time.
        std::this_thread::sleep_for(std::chrono::microseconds(100));
        ++counter;
    };
    SilentListener listener;
    const std::unique_ptr<EmbeddedHV::Execution> execution(
        service.getExecutionService()->createExecution("en_US"));
    execution->prepare(nullptr, R"(read({"dataSource": "rows"}) -> write({"dataDestination": ")"
                                "file:///" +
                                    output +
                                    R"(", "dataModelDestination": "", "type": "text/csv"}))");
    execution->addInputIterator(nullptr, &rows, nullptr);
    execution->execute(nullptr, &listener);
    execution->dispose(nullptr);
}

} // namespace

int main(int count, char** words)
{
    const bool isPlanted = count < 2 || words[1] != std::string("none");
    std::string folder = (std::filesystem::temp_directory_path() / "planted-XXXXXX").string();
    if (!mkdtemp(folder.data()))
        return 2;
    long first = 0;
    long second = 0;
    {
        EmbeddedHV::EHVAppSetting settings(folder + "/root", "", "en_US");
        settings.addProperty("ae.temp.path", folder + "/ae");
        settings.addProperty("af.temp.path", folder + "/af");
        settings.addProperty("mmr.threads", "2");
        EmbeddedHV::HVServiceManager service(nullptr, settings);
        std::thread other([&] { runJob(service, folder + "/a.csv", isPlanted ? first : second); });
        runJob(service, folder + "/b.csv", first);
        other.join();
    }
    std::filesystem::remove_all(folder);
    std::cout << "records: " << first + second << '\n';
    return first + second > 0 ? 0 : 1;
}
