package com.vexa.ae.hvlhelpers;

import com.vexa.ae.hvlhelpers.HvlExpression.SimpleTypes;
import com.vexa.ae.hvlhelpers.impl.ExecutionOrder;
import com.vexa.ae.hvlhelpers.impl.Expressions;
import com.vexa.ae.hvlhelpers.impl.FragmentPartition;
import com.vexa.ae.hvlhelpers.impl.FunctionBuilder;
import com.vexa.ae.hvlhelpers.impl.HvlExpressionConditional;
import com.vexa.ae.hvlhelpers.impl.HvlFunctionImpl;
import com.vexa.ae.hvlhelpers.impl.RecordLambda;
import com.vexa.ae.hvlhelpers.impl.TaggedFunctionInput;
import com.zor.json.java.JSONObject;
import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;

/**
 * A job under composition. Functions are created in it, each after its inputs, and rendered as
 * fragments of HVL text.
 *
 * <p>A function copies its configuration when it is created; later changes have no effect. A null
 * configuration leaves its place open. A null predecessor means no input. A name that is null or
 * invalid, or a function of another program, throws IllegalArgumentException, and the program is
 * unchanged. For one thread at a time.
 */
public final class HvlProgram implements Cloneable
{
    private static final String FILTER_RECORDS = "filterRecords";
    private static final String DERIVE_FIELD = "deriveField";

    private final String _text;
    private final Set<HvlFunctionImpl> _functions;
    private final List<FragmentPartition.Dependency> _dependencies;
    private int _lastNumber;

    /** An empty program. */
    public HvlProgram()
    {
        this((String) null);
    }

    /** A program that begins with a job text. The text is the first fragment, unchanged. */
    public HvlProgram(String text)
    {
        _text = text;
        _functions = new LinkedHashSet<>();
        _dependencies = new ArrayList<>();
    }

    private HvlProgram(HvlProgram other)
    {
        _text = other._text;
        _functions = new LinkedHashSet<>(other._functions);
        _dependencies = new ArrayList<>(other._dependencies);
        _lastNumber = other._lastNumber;
    }

    /**
     * A program with the same functions and ids. These functions belong to both programs. Functions
     * that are created later belong to one.
     */
    @Override
    public HvlProgram clone()
    {
        return new HvlProgram(this);
    }

    /**
     * Makes the second function run after the first: its fragment comes later. A chain that other
     * statements use runs with the first of them, so dependencies are only for functions that end
     * in a statement of their own.
     */
    public void addDependency(HvlFunction first, HvlFunction second)
    {
        _dependencies.add(new FragmentPartition.Dependency(own(first), own(second)));
    }

    // Expressions

    /**
     * Fills a template. Each {@code %s} is replaced by an argument, in order, and put in
     * parentheses where operator precedence requires it. {@code %%} is a percent sign.
     */
    public HvlExpression createHvlExpression(String template, HvlExpression[] arguments)
    {
        return Expressions.template(template, arguments);
    }

    /** A chain of conditions. If {@code otherwise} is null, there is no last alternative. */
    public HvlExpression
    createHvlExpressionConditional(List<HvlExpressionConditional.Clause> clauses,
                                   HvlExpression otherwise)
    {
        return Expressions.conditional(clauses, otherwise);
    }

    /** A field of the record that is a parameter of a lambda. */
    public HvlExpression createHvlExpressionFieldReference(String parameter, String field)
    {
        return Expressions.fieldReference(parameter, field);
    }

    /** A field of the record that steps with an expression pass in. */
    public HvlExpression createHvlExpressionFieldReference(String field)
    {
        return Expressions.fieldReference(RecordLambda.RECORD, field);
    }

    /** A lambda. A null list means no parameters. */
    public HvlExpression
    createHvlExpressionLambdaFunction(List<HvlExpression.LambdaSignature> signatures,
                                      HvlExpression body)
    {
        return Expressions.lambda(signatures, body);
    }

    /** A list. Null means no elements. A null element throws IllegalArgumentException. */
    public HvlExpression createHvlExpressionList(List<HvlExpression> elements)
    {
        return Expressions.list(elements);
    }

    /** An integer. For all literals, a null value is HVL's null. */
    public HvlExpression createHvlExpressionLiteral(Integer value)
    {
        return Expressions.literal(value == null ? null : Long.valueOf(value));
    }

    /** A real. A number that is not finite throws IllegalArgumentException. */
    public HvlExpression createHvlExpressionLiteral(Double value)
    {
        return Expressions.literal(value);
    }

    /** A string. Characters that a string cannot contain are escaped. */
    public HvlExpression createHvlExpressionLiteral(String value)
    {
        return Expressions.literal(value);
    }

    /** A 64-bit integer. */
    public HvlExpression createHvlExpressionLiteral(Long value)
    {
        return Expressions.literal(value);
    }

    public HvlExpression createHvlExpressionLiteral(Boolean value)
    {
        return Expressions.literal(value);
    }

    /** A missing value. */
    public HvlExpression createHvlExpressionNullValue()
    {
        return Expressions.nullValue();
    }

    /** A parameter of an enclosing lambda. */
    public HvlExpression createHvlExpressionParameterName(String name)
    {
        return Expressions.parameterName(name);
    }

    /** A tuple. The rules are those of a list. */
    public HvlExpression createHvlExpressionTuple(List<HvlExpression> elements)
    {
        return Expressions.tuple(elements);
    }

    /** A field and its value, for functions that set a field. */
    public HvlFieldDerive createHvlFieldDerive(String field, HvlExpression expression)
    {
        return new HvlFieldDerive(field, expression);
    }

    /** A named file. With the export flag, the job writes it. */
    public HvlContainer createContainer(String name, String uri, boolean export)
    {
        return new HvlContainer(name, uri, export);
    }

    // Functions

    /** A function with a place for each configuration. */
    public HvlFunction createHvlFunction(String name, List<JSONObject> configurations,
                                         HvlFunction predecessor)
    {
        return add(function(name).pipe(predecessor).jsonList(configurations));
    }

    /** A function without an input. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration)
    {
        return add(function(name).json(configuration, true));
    }

    /** A function with one input. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlFunction predecessor)
    {
        return add(function(name).pipe(predecessor).json(configuration, true));
    }

    /** A function with tagged inputs. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         Map<String, HvlFunction> inputs)
    {
        return add(function(name).json(configuration, true).inputs(inputs, true));
    }

    /** A component with its input and output containers. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         List<HvlContainer> inputContainers,
                                         List<HvlContainer> outputContainers,
                                         HvlFunction predecessor)
    {
        return add(function(name)
                       .pipe(predecessor)
                       .json(configuration, true)
                       .containers(inputContainers, "In", true)
                       .containers(outputContainers, "Out", true));
    }

    /** A function over records. Its body is the expression. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlExpression expression, HvlFunction predecessor)
    {
        return overRecords(name, configuration, RecordLambda.of(expression, null), predecessor);
    }

    /** A function over records that sets a field. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlFieldDerive derive, HvlFunction predecessor)
    {
        return createHvlFunction(name, configuration, derive, predecessor, null);
    }

    /** The same, with the types of the fields that the body uses. Null or empty declares none. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlFieldDerive derive, HvlFunction predecessor,
                                         Map<String, SimpleTypes> types)
    {
        return overRecords(name, configuration, RecordLambda.of(derive, types), predecessor);
    }

    /** Adds a field to each record. */
    public HvlFunction createHvlFunctionDeriveFields(HvlFieldDerive derive,
                                                     HvlFunction predecessor)
    {
        return createHvlFunction(DERIVE_FIELD, null, derive, predecessor, null);
    }

    /** The same, with the types of the fields that the body uses. */
    public HvlFunction createHvlFunctionDeriveFields(HvlFieldDerive derive,
                                                     HvlFunction predecessor,
                                                     Map<String, SimpleTypes> types)
    {
        return createHvlFunction(DERIVE_FIELD, null, derive, predecessor, types);
    }

    /** Keeps the records for which the condition is true. */
    public HvlFunction createHvlFunctionFilterRecords(HvlExpression condition,
                                                      HvlFunction predecessor)
    {
        return createHvlFunctionFilterRecords(condition, predecessor, null);
    }

    /** The same, with the types of the fields that the condition uses. */
    public HvlFunction createHvlFunctionFilterRecords(HvlExpression condition,
                                                      HvlFunction predecessor,
                                                      Map<String, SimpleTypes> types)
    {
        return overRecords(FILTER_RECORDS, null, RecordLambda.of(condition, types), predecessor);
    }

    /**
     * A function that is composed parameter by parameter; see {@link HvlFunctionParameter.Factory}.
     */
    public HvlFunction createHvlFunctionGeneral(String name, HvlFunctionParameter[] parameters)
    {
        FunctionBuilder function = function(name);
        if (parameters != null) {
            for (HvlFunctionParameter parameter : parameters) {
                function.parameter(parameter);
            }
        }
        return add(function);
    }

    /** A function with HVL texts after its configuration. */
    public HvlFunction createHvlFunctionGeneral(String name, JSONObject configuration,
                                                String[] arguments, HvlFunction predecessor)
    {
        return add(function(name).pipe(predecessor).json(configuration, true).raws(arguments));
    }

    /**
     * A function that takes a chain as an argument. The operand is the last function of the chain.
     */
    public HvlFunction createHvlMetaFunction(String name, JSONObject configuration,
                                             HvlFunction operand, HvlFunction predecessor)
    {
        return add(
            function(name).pipe(predecessor).json(configuration, true).operand(operand));
    }

    // The text

    /** The inputs of a function: first the piped input, without a tag, then the others in order. */
    public List<TaggedFunctionInput> getPredecessors(HvlFunction function)
    {
        return own(function).inputs();
    }

    /** The fragments of the program so far, in order of creation. */
    public Set<HvlFragment> getFragments()
    {
        return FragmentPartition.of(this, _text, _functions, _dependencies);
    }

    /**
     * Sorts the fragments of a program so that their texts form a job. Null gives an empty list.
     *
     * @throws IllegalStateException if fragments wait for each other; the message names their
     * functions
     */
    public static List<HvlFragment> sortFragmentsIntoExecutionOrder(Set<HvlFragment> fragments)
    {
        return fragments == null ? List.of() : ExecutionOrder.of(fragments);
    }

    private FunctionBuilder function(String name)
    {
        return new FunctionBuilder(name, _functions::contains);
    }

    private HvlFunction overRecords(String name, JSONObject configuration, HvlExpression lambda,
                                    HvlFunction predecessor)
    {
        return add(function(name)
                       .pipe(predecessor)
                       .json(configuration, true)
                       .expression(lambda, true));
    }

    private HvlFunctionImpl add(FunctionBuilder function)
    {
        // The given text may have names of its own, so skip ids that occur in it.
        String id;
        do {
            id = "f" + ++_lastNumber;
        } while (_text != null && _text.contains(id));
        HvlFunctionImpl created = function.build(id);
        _functions.add(created);
        return created;
    }

    private HvlFunctionImpl own(HvlFunction function)
    {
        if (function == null) {
            throw new IllegalArgumentException("a function is missing");
        }
        if (!_functions.contains(function)) {
            throw new IllegalArgumentException("the function " + function
                                               + " belongs to another program");
        }
        return (HvlFunctionImpl) function;
    }
}
