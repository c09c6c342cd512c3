// From cancelExecution on another thread to the return of execute, while a query runs.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "Job.h"
#include "Measure.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"

namespace {

constexpr double limitMilliseconds = 250;
constexpr int repetitions = 20;

std::string composeJob(const std::string& directory)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadCSV(bench::engineUrl(directory + "/rows.csv"), true);
    // Enough work to run for seconds: the cancellation has to meet it in the middle.
    HVLAggregate aggregate(&program);
    aggregate.AddAggregate("key", "id", "id");
    aggregate.AddAggregate("median", "a", "a");
    aggregate.AddAggregate("median", "b", "b");
    aggregate.AddPredFunction(&read);
    HVLWrite write(&program);
    write.WriteCSV(bench::engineUrl(directory + "/cancelled.csv"));
    write.AddPredFunction(&aggregate);
    write.GenerateHVL();
    std::string job;
    program.getHvlText(job);
    return job;
}

/// One job that is cancelled `delay` after its start.
double cancelOnce(const std::string& directory, std::chrono::milliseconds delay)
{
    // A runner without a procedure stays stopped, so each job has its own.
    HVRunner runner;
    runner.prepareHVLJob(composeJob(directory));
    const bench::Stopwatch watch;
    double cancelledAt = 0;
    std::thread canceller([&] {
        std::this_thread::sleep_for(delay);
        cancelledAt = watch.milliseconds();
        runner.cancelExecution();
    });
    runner.execute();
    const double returnedAt = watch.milliseconds();
    canceller.join();
    if (runner.getProgressListener()->getState() != HVProgressListener::Cancelled) {
        std::fprintf(stderr, "bench: the job had ended before it was cancelled\n");
        std::exit(1);
    }
    runner.cleanExecution();
    return returnedAt - cancelledAt;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_cancel DIR\n");
        return 2;
    }
    std::vector<double> times;
    times.reserve(repetitions);
    // Different moments of the query, from its beginning on.
    for (int i = 0; i < repetitions; ++i)
        times.push_back(cancelOnce(argv[1], std::chrono::milliseconds(100 + 40 * i)));
    const double middle = bench::median(times);
    std::printf("cancel of a running query: median %.4g ms of %d (limit %.4g ms)%s\n", middle,
                repetitions, limitMilliseconds, middle <= limitMilliseconds ? "" : " OVER");
    return middle <= limitMilliseconds ? 0 : 1;
}
