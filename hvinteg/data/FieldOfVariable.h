#pragma once

#include "CFField.h"
#include "VexaVariable.h"

/// Converts variables of the host to fields of the engine.

/// `level` replaces the variable's own measurement level.
CFField::FieldType fieldTypeOf(MeasurementLevel level, bool isString);
/// Converts the host's code for the role of a variable.
CFField::RoleType roleOf(int hostRole);

/// Builds the field with label, value labels and missing values. `converter` is a handle from
/// VEXAMBConverterNew_A.
CFField fieldOf(const VEXA_Variable& variable, MeasurementLevel level, CFField::RoleType role,
                void* converter);
