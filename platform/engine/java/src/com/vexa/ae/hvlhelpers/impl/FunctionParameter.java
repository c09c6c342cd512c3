package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFunctionParameter;

/** A parameter that can add itself to a function. */
@FunctionalInterface
interface FunctionParameter extends HvlFunctionParameter
{
    void addTo(FunctionBuilder function);
}
