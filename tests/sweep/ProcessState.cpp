#include "sweep/ProcessState.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "Attention.h"
#include "CommonBlocks.h"
#include "support/RecordingJni.h"

namespace {

int entriesOf(const char* folder)
{
    int count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
        ++count;
    return count;
}

std::string nameOfThread(const std::filesystem::path& folder)
{
    std::string name;
    std::getline(std::ifstream(folder / "comm"), name);
    return name;
}

/// The machine names its threads; all others have the name of the process.
int unnamedThreads()
{
    const std::string own = nameOfThread("/proc/self");
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task"))
        count += nameOfThread(entry.path()) == own ? 1 : 0;
    return count;
}

int threadsNow(int expected)
{
    constexpr int kTries = 20;
    int threads = unnamedThreads();
    for (int i = 0; i < kTries && threads > expected; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        threads = unnamedThreads();
    }
    return threads;
}

} // namespace

ProcessState ProcessState::now(const RecordingJni* jni, int expectedThreads)
{
    ProcessState state;
    state.threads = threadsNow(expectedThreads);
    state.openFiles = entriesOf("/proc/self/fd");
    state.globalReferences = jni ? jni->liveGlobals() : 0;
    state.localReferences = jni ? jni->liveLocals() : 0;
    state.weight = pvGetCmnGlb()->weight;
    state.split = pvGetCmnGlb()->split;
    state.hasInterruptHandler = GetAdapter()->getInterruptHandler() != nullptr;
    return state;
}

std::string ProcessState::differencesFrom(const ProcessState& before) const
{
    std::string text;
    const auto compare = [&text](const char* name, std::int64_t now, std::int64_t was, bool wrong) {
        if (wrong)
            text += std::string(text.empty() ? "" : ", ") + name + " " + std::to_string(now) +
                    " instead of " + std::to_string(was);
    };
    compare("open files", openFiles, before.openFiles, openFiles > before.openFiles);
    compare("threads", threads, before.threads, threads > before.threads);
    compare("global references", globalReferences, before.globalReferences,
            globalReferences != before.globalReferences);
    compare("local references", localReferences, before.localReferences,
            localReferences != before.localReferences);
    compare("weight", weight, before.weight, weight != before.weight);
    compare("split", split, before.split, split != before.split);
    compare("interrupt handler", hasInterruptHandler, before.hasInterruptHandler,
            hasInterruptHandler != before.hasInterruptHandler);
    return text;
}
