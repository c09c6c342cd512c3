package com.vexa.ae.hvlhelpers;

/** One of the named types. */
public final class HvlTypeSimple implements HvlType
{
    private final HvlExpression.SimpleTypes _type;

    /** A null type is Any. */
    public HvlTypeSimple(HvlExpression.SimpleTypes type)
    {
        _type = type == null ? HvlExpression.SimpleTypes.Any : type;
    }

    @Override
    public String generate()
    {
        return _type.name();
    }
}
