import com.vexa.ae.hvlhelpers.HvlExpression;
import com.vexa.ae.hvlhelpers.HvlFragment;
import com.vexa.ae.hvlhelpers.HvlFunction;
import com.vexa.ae.hvlhelpers.HvlFunctionParameter;
import com.vexa.ae.hvlhelpers.HvlProgram;
import com.zor.json.java.JSONArray;
import com.zor.json.java.JSONImage;
import com.zor.json.java.JSONObject;
import java.util.List;
import java.util.Map;

/** Composes a job with every kind of function, so that all classes are loaded once. */
final class TouchClasses
{
    private TouchClasses()
    {
    }

    public static void main(String[] arguments)
    {
        HvlProgram program = new HvlProgram();
        JSONObject json = JSONObject.parse("{\"a\": [1, 2.5, true, null, {\"b\": \"c\"}]}");
        JSONArray array = JSONArray.parse("[9000000000]");
        array.add(json);
        HvlFunction read = program.createHvlFunction("read", json);
        HvlExpression field = program.createHvlExpressionFieldReference("F 1");
        HvlExpression sum = program.createHvlExpression(
            "%s + %s",
            new HvlExpression[] {field, program.createHvlExpressionLiteral(1.5)});
        HvlFunction derived = program.createHvlFunctionDeriveFields(
            program.createHvlFieldDerive("G", sum), read,
            Map.of("F 1", HvlExpression.SimpleTypes.Real));
        HvlFunction joined =
            program.createHvlFunction("join", json, Map.of("l", derived, "r", read));
        HvlFunctionParameter.Factory factory = HvlFunctionParameter.FactoryInstance.getFactory();
        program.createHvlFunctionGeneral(
            "a:step", new HvlFunctionParameter[] {
                          factory.createInput(joined),
                          factory.createContainers(
                              List.of(program.createContainer("n", "file:///n", true)), true)});
        for (HvlFragment fragment :
             HvlProgram.sortFragmentsIntoExecutionOrder(program.getFragments())) {
            fragment.toHVLText();
        }
        json.serialize(true);
        array.serialize();
        JSONImage.of(json);
    }
}
