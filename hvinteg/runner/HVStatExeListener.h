#pragma once

#include "ExecutionListener.h"
#include "support/HvintegExport.h"

/// What the engine reports to while a job runs; all of its operations are left open.
class HVINTEG_EXPORT HVStatExeListener : public EmbeddedHV::ExtendedExecutionListener
{
public:
    ~HVStatExeListener() override;
};
