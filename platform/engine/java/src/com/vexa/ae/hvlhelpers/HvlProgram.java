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
 * <p>A configuration is taken as it is when its function is created; later changes do not count. A
 * null configuration leaves its place open. A null predecessor is none. A name that is null or not
 * a name, and a function that belongs to another program, is an IllegalArgumentException, and the
 * program stays as it was. For one thread at a time.
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

    /** A program that starts with job text, which stands first, as it is, as one fragment. */
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
     * A program with the same functions, under the same ids. The functions belong to both programs;
     * what is created afterwards belongs to one.
     */
    @Override
    public HvlProgram clone()
    {
        return new HvlProgram(this);
    }

    /**
     * Makes the second function run after the first: its fragment stands behind the other's. A
     * chain that other statements use runs with the first of them, so a dependency is for functions
     * that end in a statement of their own.
     */
    public void addDependency(HvlFunction first, HvlFunction second)
    {
        _dependencies.add(new FragmentPartition.Dependency(own(first), own(second)));
    }

    // Expressions

    /**
     * Fills a text: the places {@code %s} take the arguments in order, in parentheses where an
     * operator would tear them apart, and {@code %%} is a percent sign.
     */
    public HvlExpression createHvlExpression(String template, HvlExpression[] arguments)
    {
        return Expressions.template(template, arguments);
    }

    /** A chain of conditions; null as {@code otherwise} leaves the last alternative out. */
    public HvlExpression
    createHvlExpressionConditional(List<HvlExpressionConditional.Clause> clauses,
                                   HvlExpression otherwise)
    {
        return Expressions.conditional(clauses, otherwise);
    }

    /** The field of the record under a parameter of a lambda. */
    public HvlExpression createHvlExpressionFieldReference(String parameter, String field)
    {
        return Expressions.fieldReference(parameter, field);
    }

    /** The field of the record that the steps with an expression hand in. */
    public HvlExpression createHvlExpressionFieldReference(String field)
    {
        return Expressions.fieldReference(RecordLambda.RECORD, field);
    }

    /** A function with parameters; a null list is a function without any. */
    public HvlExpression
    createHvlExpressionLambdaFunction(List<HvlExpression.LambdaSignature> signatures,
                                      HvlExpression body)
    {
        return Expressions.lambda(signatures, body);
    }

    /** A list; null is one without elements, a null element an IllegalArgumentException. */
    public HvlExpression createHvlExpressionList(List<HvlExpression> elements)
    {
        return Expressions.list(elements);
    }

    /** A null value of a literal, of any class, is HVL's null. */
    public HvlExpression createHvlExpressionLiteral(Integer value)
    {
        return Expressions.literal(value == null ? null : Long.valueOf(value));
    }

    /** A number that is not finite is an IllegalArgumentException. */
    public HvlExpression createHvlExpressionLiteral(Double value)
    {
        return Expressions.literal(value);
    }

    /** A string; characters that a string cannot hold are escaped. */
    public HvlExpression createHvlExpressionLiteral(String value)
    {
        return Expressions.literal(value);
    }

    /** An integer of 64 bits. */
    public HvlExpression createHvlExpressionLiteral(Long value)
    {
        return Expressions.literal(value);
    }

    public HvlExpression createHvlExpressionLiteral(Boolean value)
    {
        return Expressions.literal(value);
    }

    /** The value of a field that has none. */
    public HvlExpression createHvlExpressionNullValue()
    {
        return Expressions.nullValue();
    }

    /** A parameter of a lambda around the expression. */
    public HvlExpression createHvlExpressionParameterName(String name)
    {
        return Expressions.parameterName(name);
    }

    /** A tuple, by the rules of a list. */
    public HvlExpression createHvlExpressionTuple(List<HvlExpression> elements)
    {
        return Expressions.tuple(elements);
    }

    /** A field and its value, for the functions that give a field its value. */
    public HvlFieldDerive createHvlFieldDerive(String field, HvlExpression expression)
    {
        return new HvlFieldDerive(field, expression);
    }

    /** A named file; with the export flag, one that the job writes. */
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

    /** A function whose inputs are named by tag. */
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

    /** A function over records whose body is the expression. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlExpression expression, HvlFunction predecessor)
    {
        return overRecords(name, configuration, RecordLambda.of(expression, null), predecessor);
    }

    /** A function over records that gives a field its value. */
    public HvlFunction createHvlFunction(String name, JSONObject configuration,
                                         HvlFieldDerive derive, HvlFunction predecessor)
    {
        return createHvlFunction(name, configuration, derive, predecessor, null);
    }

    /** The same, with the types of fields that the body uses; null or empty declares none. */
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

    /** The same, with the types of fields that the body uses. */
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

    /** The same, with the types of fields that the condition uses. */
    public HvlFunction createHvlFunctionFilterRecords(HvlExpression condition,
                                                      HvlFunction predecessor,
                                                      Map<String, SimpleTypes> types)
    {
        return overRecords(FILTER_RECORDS, null, RecordLambda.of(condition, types), predecessor);
    }

    /** A function composed place by place; see {@link HvlFunctionParameter.Factory}. */
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

    /** A function with HVL texts in the places behind its configuration. */
    public HvlFunction createHvlFunctionGeneral(String name, JSONObject configuration,
                                                String[] arguments, HvlFunction predecessor)
    {
        return add(function(name).pipe(predecessor).json(configuration, true).raws(arguments));
    }

    /** A function that takes a chain, the one that ends in the operand, as an argument. */
    public HvlFunction createHvlMetaFunction(String name, JSONObject configuration,
                                             HvlFunction operand, HvlFunction predecessor)
    {
        return add(
            function(name).pipe(predecessor).json(configuration, true).operand(operand));
    }

    // The text

    /** The inputs of a function: the piped one first, untagged, then the others by place. */
    public List<TaggedFunctionInput> getPredecessors(HvlFunction function)
    {
        return own(function).inputs();
    }

    /** The fragments of the program as it stands, in order of creation. */
    public Set<HvlFragment> getFragments()
    {
        return FragmentPartition.of(this, _text, _functions, _dependencies);
    }

    /**
     * Fragments of one program in the order in which their texts make a job; null gives none.
     *
     * @throws IllegalStateException if fragments wait for each other, with their functions
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
        // Text that was given may have names of its own; an id that it shows is passed over.
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
