#include "bridge/JavaThreadScope.h"

#include "VexaJVM.h"

JavaThreadScope::JavaThreadScope()
{
    VexaJVM* const machine = VexaJVM::GetInstance();
    if (machine->IsStarted() || machine->WaitForStartedJVM())
        machine->AttachCurrentThread(&_env);
    else
        machine->StartJVMAndAttachThread(&_env);
}

JavaThreadScope::~JavaThreadScope()
{
    VexaJVM::GetInstance()->DetachCurrentThread();
}
