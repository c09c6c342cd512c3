#include "VexaJVM.h"
#include "bridge/JNIObjectManager.h"

// Linked with targets that work with Java: the machine starts before the first input.

/// The leak check misreads blocks of thread-local storage of Java's threads. A target may have a
/// part of the engine twice, from the archive and from the shared library.
extern "C" const char* __asan_default_options()
{
    return "detect_odr_violation=0:intercept_tls_get_addr=0:detect_leaks=0:malloc_context_size=4";
}

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    VexaJVM* const machine = VexaJVM::GetInstance();
    machine->AddOption("-Xmx256m");
    // The better compiler would take the time that the targets need.
    machine->AddOption("-XX:TieredStopAtLevel=1");
    JNIObjectManager::newManager();
    return 0;
}
