// Composing a program of a hundred functions and taking its text, against the same Java calls
// written by hand in one place: what the builders and wrappers cost.

#include <jni.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "HandWritten.h"
#include "Measure.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIObjectManager.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLRead.h"
#include "runner/HVRunner.h"

namespace {

constexpr int functions = 100;

std::string composeWithBuilders()
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadHVDatasource("rows");
    std::vector<std::unique_ptr<HVLFilterFields>> steps;
    HVLFunction* last = &read;
    for (int i = 1; i < functions; ++i) {
        auto step = std::make_unique<HVLFilterFields>(&program);
        step->KeepFieldNames("weather");
        step->KeepFieldNames("wind");
        step->AddPredFunction(last);
        last = step.get();
        steps.push_back(std::move(step));
    }
    last->GenerateHVL();
    std::string text;
    program.getHvlText(text);
    return text;
}

} // namespace

int main()
{
    HVRunner runner;
    JNIObjectManager* manager = JNIObjectManager::getManager();
    if (composeWithBuilders() != bench::composeByHand(manager->getEnv(), functions)) {
        std::fprintf(stderr, "bench: the two programs differ\n");
        return 1;
    }
    manager->cleanJRef();
    // The virtual machine compiles what is called often; a figure is of the state after that.
    for (int i = 0; i < 200; ++i) {
        composeWithBuilders();
        manager->cleanJRef();
        bench::composeByHand(manager->getEnv(), functions);
    }
    const bench::Comparison comparison = bench::interleave(
        200,
        [&] {
            const bench::Stopwatch watch;
            composeWithBuilders();
            manager->cleanJRef();
            return watch.milliseconds();
        },
        [&] {
            const bench::Stopwatch watch;
            bench::composeByHand(manager->getEnv(), functions);
            return watch.milliseconds();
        });
    return bench::report("compose a program of 100 functions", comparison, "ms", 1.5) ? 0 : 1;
}
