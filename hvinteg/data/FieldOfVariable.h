#pragma once

#include "CFField.h"
#include "VexaVariable.h"

/// What a variable of the host is to the engine.

/// `level` is the level to take, which need not be the variable's own.
CFField::FieldType fieldTypeOf(MeasurementLevel level, bool isString);
/// By the variable's own role.
CFField::RoleType roleOf(int hostRole);

/// The field, with labels, value labels and missing values. `converter` is a handle from
/// VEXAMBConverterNew_A.
CFField fieldOf(const VEXA_Variable& variable, MeasurementLevel level, CFField::RoleType role,
                void* converter);
