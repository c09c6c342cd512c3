#pragma once

#include "RowDataIterator.h"
#include "support/HvintegExport.h"

/// Rows that a job reads; the job refers to them by getName. The engine reads them on its own
/// threads, one at a time, during HVRunner::execute. The caller keeps ownership; the object must
/// live until HVRunner::cleanExecution.
class HVINTEG_EXPORT HVStatDataIterator : public EmbeddedHV::RowDataIterator
{
public:
    ~HVStatDataIterator() override;
};
