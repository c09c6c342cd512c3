#pragma once

#include "Container.h"
#include "support/HvintegExport.h"

/// A named file that a job reads or writes, as HVRunner takes it. The object stays the caller's and
/// lives until HVRunner::cleanExecution.
class HVINTEG_EXPORT HVStatContainer : public EmbeddedHV::Container
{
public:
    ~HVStatContainer() override;
};
