#pragma once

#include "CFField.h"
#include "HostExport.h"
#include "VexaVariable.h"

class CFFormat;

/// 1970-01-01 as a host date: seconds since 1582-10-14.
HOST_API double GetBaseDateNumber();

/// A number of the host on the scale of field metadata: a date in days, a timestamp in seconds,
/// both since 1970-01-01; everything else as it is. And back.
HOST_API double NumericStorageStatToCF(double value, CFField::StorageType storage);
HOST_API double NumericStorageCFToStat(double value, CFField::StorageType storage);

/// The print format of a variable as field metadata keeps it; the caller deletes it. Null for a
/// variable without one.
HOST_API CFFormat* GetCFFieldFormat(const VEXA_Variable& variable);
