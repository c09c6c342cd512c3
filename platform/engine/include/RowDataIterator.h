#pragma once

#include <jni.h>

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// Rows, one at a time. The host implements it to feed a job; the engine implements it to hand out
/// the rows of a file that a job wrote. Both sides answer the same operations.
///
/// A value is a pointer and a length in bytes, and lasts until the next nextRecord:
///  - a missing value is a null pointer;
///  - a string is UTF-8 bytes, not terminated;
///  - everything else is the address of a double in host byte order: a date in days, a time in
///    seconds from midnight, a timestamp in seconds, dates and timestamps counted from 1970-01-01.
class ENGINE_API RowDataIterator
{
public:
    /// Codes of nextRecord and getRecordValue.
    enum Status : unsigned int
    {
        RecordAvailable = 0,
        EndOfData = 1,
        Cancelled = 3
    };

    /// The name by which the job text refers to the rows, UTF-8.
    virtual std::string getName() = 0;
    /// The fields, as the XML text of a data model document.
    virtual std::string getDataModel() = 0;
    /// Moves to the next record; the first call moves to the first one.
    virtual unsigned int nextRecord() = 0;
    /// The value of a field of the present record. With a result other than RecordAvailable the two
    /// outputs stay as they were.
    virtual unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                        unsigned long long& length) = 0;
    /// Ends the iteration and releases what it holds. The object itself stays.
    virtual void dispose(JNIEnv* env) = 0;
    virtual ~RowDataIterator() = default;
};

} // namespace EmbeddedHV
