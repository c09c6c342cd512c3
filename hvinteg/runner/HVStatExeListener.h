#pragma once

#include "ExecutionListener.h"
#include "support/HvintegExport.h"

/// Receives the engine's reports while a job runs. All operations are pure virtual.
class HVINTEG_EXPORT HVStatExeListener : public EmbeddedHV::ExtendedExecutionListener
{
public:
    ~HVStatExeListener() override;
};
