#pragma once

#include "CFField.h"
#include "HostExport.h"
#include "VexaVariable.h"

class CFFormat;

/// 1970-01-01 as a host date: seconds since 1582-10-14.
HOST_API double GetBaseDateNumber();

/// Converts a number from the host's scale to that of field metadata. There a date is days and a
/// timestamp seconds, both since 1970-01-01. Other numbers are unchanged.
HOST_API double NumericStorageStatToCF(double value, CFField::StorageType storage);
/// Converts a number from the scale of field metadata to the host's scale: the inverse of
/// NumericStorageStatToCF.
HOST_API double NumericStorageCFToStat(double value, CFField::StorageType storage);

/// Converts the print format of a variable to the form of field metadata. The caller deletes the
/// result. Null if the variable has none.
HOST_API CFFormat* GetCFFieldFormat(const VEXA_Variable& variable);
