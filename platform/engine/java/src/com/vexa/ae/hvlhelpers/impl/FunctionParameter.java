package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFunctionParameter;

/** A parameter as the step that adds it to its function. */
@FunctionalInterface
interface FunctionParameter extends HvlFunctionParameter
{
    void addTo(FunctionBuilder function);
}
