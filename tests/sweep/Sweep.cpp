#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include "FaultLayer.h"
#include "VexaJVM.h"
#include "bridge/JNIObjectManager.h"
#include "support/RecordingJni.h"
#include "sweep/FaultChoice.h"
#include "sweep/ProcessState.h"
#include "sweep/Road.h"

// One process of the sweep: runs a road again and again, each time with another call that fails,
// and reports each run on standard output. scripts/sweep starts it, and starts it again behind a
// run that ended the process.
//
//   sweep_road DATA FOLDER list    names the roads and the kinds of faults
//   sweep_road DATA FOLDER ROAD    takes orders from standard input, a line each:
//     count KIND         runs once without a fault and counts the calls
//     run KIND NUMBER    runs once and has the call with this number fail

namespace {

/// One line of the report, its parts with tabs between. Written at once: the next run may end the
/// process.
class Report
{
public:
    Report() : _file(fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3), "w")) {}
    ~Report() { std::fclose(_file); }
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    template <class... Parts>
    void line(const Parts&... parts)
    {
        const char* separator = "";
        ((std::fprintf(_file, "%s%s", separator, oneLine(parts).c_str()), separator = "\t"), ...);
        std::fprintf(_file, "\n");
        std::fflush(_file);
    }

private:
    static std::string oneLine(long number) { return std::to_string(number); }
    static std::string oneLine(std::string text)
    {
        for (char& letter : text)
            if (letter == '\n' || letter == '\t')
                letter = ' ';
        return text;
    }

    std::FILE* _file;
};

std::string nameOfSite(const void* site)
{
    Dl_info info = {};
    if (site == nullptr || dladdr(site, &info) == 0)
        return "-";
    char offset[32];
    // One less: the address is behind the call.
    std::snprintf(offset, sizeof offset, "+0x%zx",
                  static_cast<std::size_t>(static_cast<const char*>(site) -
                                           static_cast<const char*>(info.dli_fbase) - 1));
    return std::string(info.dli_fname) + offset;
}

/// Prints where the process ends, and where the call failed, for the findings of scripts/sweep. The
/// process ends for good when this returns.
void reportAbort(int)
{
    constexpr int kMostFrames = 30;
    void* frames[kMostFrames];
    const faultlayer::Outcome outcome = faultlayer::disarm();
    std::fprintf(stderr, "terminated; the call failed at %s; frames:\n",
                 nameOfSite(outcome.site).c_str());
    backtrace_symbols_fd(frames, backtrace(frames, kMostFrames), STDERR_FILENO);
}

class RoadSweep
{
public:
    RoadSweep(const NamedRoad& named, Report& report) : _report(report), _road(named.make())
    {
        // Some of what the first runs make stays for good, such as classes of Java.
        constexpr int kWarmUps = 3;
        for (int i = 0; i < kWarmUps; ++i)
            _reference = clean();
        _jni = &RecordingJni::install(VexaJVM::GetInstance()->GetJavaVM(), true);
        _reference = clean();
        _jni->restart();
        _reference = clean();
        _before = ProcessState::now(_jni, 0);
        _filesBefore = _road->filesLeft();
    }

    /// A road that fails by itself cannot be swept.
    std::string problem() const
    {
        if (!_reference.succeeded || !_reference.complaint.empty())
            return "the road fails without a fault: " + _reference.told + _reference.complaint;
        return {};
    }

    void obey(const std::string& order, const std::string& kind, long number)
    {
        const std::unique_ptr<FaultChoice> fault = makeFault(kind, *_road);
        if (!fault)
            _report.line(std::string("problem"), "there is no kind of fault " + kind);
        else if (order == "count")
            count(*fault);
        else
            runAt(*fault, number);
    }

private:
    void count(FaultChoice& fault)
    {
        FaultChoice::Outcome outcome;
        runWith(fault, 0, outcome);
        release();
        _report.line(std::string("count"), outcome.calls);
    }

    RoadResult runWith(FaultChoice& fault, long number, FaultChoice::Outcome& outcome)
    {
        return _road->run([&](bool isOn) {
            if (isOn)
                fault.arm(number);
            else
                outcome = fault.disarm();
        });
    }

    void runAt(FaultChoice& fault, long number)
    {
        FaultChoice::Outcome outcome;
        const RoadResult result = runWith(fault, number, outcome);
        const std::string finding = judge(result, outcome);
        _report.line(std::string("run"), std::string(outcome.delivered ? "1" : "0"),
                     outcome.function + nameOfSite(outcome.site),
                     std::string(result.succeeded ? "success" : "failure"), finding, result.told);
    }

    RoadResult clean()
    {
        RoadResult result = _road->run([](bool) {});
        release();
        return result;
    }

    void release()
    {
        JNIObjectManager::newManager();
        JNIObjectManager::getManager()->cleanJRef();
        _road->cleanUp();
    }

    std::string judge(const RoadResult& result, const FaultChoice::Outcome& outcome)
    {
        std::string finding = result.complaint;
        const auto add = [&finding](const std::string& text) {
            finding += (finding.empty() || text.empty() ? "" : "; ") + text;
        };
        if (!outcome.delivered && !result.succeeded)
            add("a failure without a fault");
        if (!result.succeeded && result.told.find(outcome.cause) == std::string::npos)
            add("a failure that does not say: " + outcome.cause);
        if (result.succeeded && result.output != _reference.output)
            add("success with another result");
        for (const std::string& file : newFiles())
            add("left: " + file);
        release();
        add(stateFinding());
        for (const std::string& violation : _jni->violations())
            add(violation);
        return finding;
    }

    std::vector<std::string> newFiles()
    {
        std::vector<std::string> files;
        const std::vector<std::string> now = _road->filesLeft();
        for (const std::string& file : now)
            if (std::find(_filesBefore.begin(), _filesBefore.end(), file) == _filesBefore.end())
                files.push_back(file);
        _filesBefore = now;
        return files;
    }

    /// What is kept for the next run, such as a database that was opened ahead, is no finding: it
    /// must be gone, or in use, once that has ended.
    std::string stateFinding()
    {
        ProcessState now = ProcessState::now(_jni, _before.threads);
        if (now.differencesFrom(_before).empty())
            return {};
        const RoadResult again = clean();
        now = ProcessState::now(_jni, _before.threads);
        const std::string differences = now.differencesFrom(_before);
        _jni->restart();
        // Each run is measured against the one before it.
        _before = ProcessState::now(_jni, 0);
        return again.succeeded ? differences : differences + "; the next run fails: " + again.told;
    }

    Report& _report;
    std::unique_ptr<Road> _road;
    RoadResult _reference;
    RecordingJni* _jni = nullptr;
    ProcessState _before;
    std::vector<std::string> _filesBefore;
};

int sweep(const NamedRoad& named, Report& report)
{
    RoadSweep road(named, report);
    if (const std::string problem = road.problem(); !problem.empty()) {
        report.line(std::string("problem"), problem);
        return 1;
    }
    report.line(std::string("ready"));
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::string order;
        std::string kind;
        long number = 0;
        words >> order >> kind >> number;
        road.obey(order, kind, number);
    }
    return 0;
}

} // namespace

int main(int count, char** words)
{
    constexpr int kWords = 4;
    if (count != kWords)
        return 2;
    Report report;
    // Not for std::terminate alone: assertions of libraries abort as well.
    std::signal(SIGABRT, reportAbort);
    std::vector<NamedRoad> roads = commandRoads(words[1], words[2]);
    for (NamedRoad& road : dialogRoads())
        roads.push_back(std::move(road));
    const std::string name = words[3];
    if (name == "list") {
        for (const NamedRoad& road : roads)
            report.line(std::string("road"), road.name);
        for (const std::string& kind : faultKinds())
            report.line(std::string("kind"), kind);
        return 0;
    }
    std::filesystem::create_directories(std::string(words[2]) + "/out");
    for (const NamedRoad& road : roads)
        if (road.name == name)
            return sweep(road, report);
    report.line(std::string("problem"), "there is no road " + name);
    return 2;
}
