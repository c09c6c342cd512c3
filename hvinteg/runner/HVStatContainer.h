#pragma once

#include "Container.h"
#include "support/HvintegExport.h"

/// A named file that a job reads or writes. The caller keeps ownership; the object must live until
/// HVRunner::cleanExecution.
class HVINTEG_EXPORT HVStatContainer : public EmbeddedHV::Container
{
public:
    ~HVStatContainer() override;
};
