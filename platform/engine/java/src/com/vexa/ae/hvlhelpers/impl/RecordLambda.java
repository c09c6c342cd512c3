package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression;
import com.vexa.ae.hvlhelpers.HvlExpression.SimpleTypes;
import com.vexa.ae.hvlhelpers.HvlFieldDerive;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.stream.Collectors;

/** Makes the lambda over a record for steps that take an expression. */
public final class RecordLambda
{
    /** The name of the record in the body. Field references without a parameter use it. */
    public static final String RECORD = "x";

    private RecordLambda()
    {
    }

    /**
     * {@code ctx => x => body}; the record has declared types if {@code types} has any. A body that
     * is already a lambda has its own parameters and is unchanged.
     */
    public static HvlExpression of(HvlExpression body, Map<String, SimpleTypes> types)
    {
        boolean typed = types != null && !types.isEmpty();
        if (body == null) {
            throw new IllegalArgumentException("the expression is missing");
        }
        if (body.form() != HvlExpression.Form.Lambda) {
            String record = typed ? RECORD + ": " + recordType(types) : RECORD;
            return new ExpressionText("ctx => " + record + " => " + body.generate(),
                                      HvlExpression.Form.Lambda);
        }
        if (typed) {
            throw new IllegalArgumentException("a lambda takes no field types");
        }
        return body;
    }

    /** The same. The body is the tuple of a field and its value. */
    public static HvlExpression of(HvlFieldDerive derive, Map<String, SimpleTypes> types)
    {
        if (derive == null) {
            throw new IllegalArgumentException("the derived field is missing");
        }
        return of(Expressions.tuple(List.of(Expressions.literal(derive.getName()),
                                            derive.getExpression())),
                  types);
    }

    private static String recordType(Map<String, SimpleTypes> types)
    {
        types.keySet().forEach(field -> HvlNames.present(field, "a field with a type"));
        return new TreeMap<>(types).entrySet().stream()
            .map(field -> HvlNames.label(field.getKey()) + ": "
                 + (field.getValue() == null ? SimpleTypes.Any : field.getValue()))
            .collect(Collectors.joining(", ", "{", "}"));
    }
}
