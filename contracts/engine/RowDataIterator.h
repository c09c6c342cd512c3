#pragma once

#include <jni.h>

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// Rows, one at a time. The host implements it to feed a job. The engine implements it to return
/// the rows of a file that a job wrote. The engine calls it from one thread at a time, on threads
/// of its choice.
///
/// A value is a pointer and a length in bytes. It is valid until the next nextRecord.
///  - a missing value is a null pointer;
///  - a string is UTF-8 bytes without a terminator;
///  - any other value is the address of a double in host byte order: a date in days since
///    1970-01-01, a time in seconds since midnight, a timestamp in seconds since 1970-01-01.
class ENGINE_API RowDataIterator
{
public:
    /// Status codes of nextRecord and getRecordValue.
    enum Status : unsigned int
    {
        RecordAvailable = 0, ///< there is a current record
        EndOfData = 1,       ///< there are no more records
        Cancelled = 3        ///< the iterator was stopped; it gives no more records
    };

    /// The name by which the job text refers to the rows, UTF-8.
    virtual std::string getName() = 0;
    /// The fields, as the XML text of a data model document, UTF-8.
    virtual std::string getDataModel() = 0;
    /// Moves to the next record. The first call moves to the first record. Returns a Status.
    virtual unsigned int nextRecord() = 0;
    /// Gets the value of a field of the current record. `fieldIndex` counts from 0. Returns a
    /// Status. If the status is not RecordAvailable, `value` and `length` are unchanged.
    virtual unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                        unsigned long long& length) = 0;
    /// Ends the iteration and releases what the iterator holds. Does not delete the object.
    virtual void dispose(JNIEnv* env) = 0;
    /// The owner deletes the object: the host its own, the engine those of an execution.
    virtual ~RowDataIterator() = default;
};

} // namespace EmbeddedHV
