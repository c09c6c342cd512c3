#pragma once

#include "RowDataIterator.h"
#include "support/HvintegExport.h"

/// Rows that feed a job, as HVRunner and the read builder take them; the job names them by getName.
/// The engine pulls on threads of its choosing, one at a time, during HVRunner::execute. The object
/// stays the caller's and lives until HVRunner::cleanExecution.
class HVINTEG_EXPORT HVStatDataIterator : public EmbeddedHV::RowDataIterator
{
public:
    ~HVStatDataIterator() override;
};
