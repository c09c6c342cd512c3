package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression;
import java.util.List;

/** The chain {@code if (c1) v1 else if (c2) v2 else v3}. */
public final class HvlExpressionConditional implements HvlExpression
{
    private final String _text;

    /** A condition, and the value if it is true. */
    public static final class Clause
    {
        private final HvlExpression _condition;
        private final HvlExpression _value;

        /** Accepts nulls. The conditional that takes the clause rejects them. */
        public Clause(HvlExpression condition, HvlExpression value)
        {
            _condition = condition;
            _value = value;
        }

        private void render(int number, StringBuilder text)
        {
            if (_condition == null || _value == null) {
                throw new IllegalArgumentException("clause " + number + " of a conditional has no "
                                                   + (_condition == null ? "condition" : "value"));
            }
            // Without parentheses, a conditional would take the `else` of this one.
            boolean open = _value.form() == Form.Conditional || _value.form() == Form.Lambda;
            text.append("if ").append(ExpressionText.parenthesised(_condition)).append(' ')
                .append(open ? ExpressionText.parenthesised(_value) : _value.generate());
        }
    }

    /** If {@code otherwise} is null, the chain ends with its last clause. */
    HvlExpressionConditional(List<Clause> clauses, HvlExpression otherwise)
    {
        if (clauses == null || clauses.isEmpty()) {
            throw new IllegalArgumentException("a conditional needs a clause");
        }
        StringBuilder text = new StringBuilder();
        int number = 0;
        for (Clause clause : clauses) {
            if (clause == null) {
                throw new IllegalArgumentException("a clause of a conditional is missing");
            }
            text.append(number == 0 ? "" : " else ");
            clause.render(++number, text);
        }
        if (otherwise != null) {
            text.append(" else ").append(otherwise.generate());
        }
        _text = text.toString();
    }

    @Override
    public String generate()
    {
        return _text;
    }

    @Override
    public Form form()
    {
        return Form.Conditional;
    }
}
