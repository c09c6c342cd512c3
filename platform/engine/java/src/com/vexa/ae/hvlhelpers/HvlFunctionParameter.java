package com.vexa.ae.hvlhelpers;

import com.vexa.ae.hvlhelpers.impl.FunctionParameterFactory;
import com.zor.json.java.JSONObject;
import java.util.List;
import java.util.Map;

/** One parameter of a function that is composed parameter by parameter. */
public interface HvlFunctionParameter
{
    /**
     * Makes parameters. {@code bound} states whether a definition binds the value to a name (true)
     * or the value is written inside the call (false). A null value leaves its place open.
     */
    interface Factory
    {
        /** A list of containers. Null elements are left out. */
        HvlFunctionParameter createContainers(List<HvlContainer> containers, boolean bound);

        HvlFunctionParameter createExpression(HvlExpression expression, boolean bound);

        /** The function whose records are piped in. It takes no place. Null means none. */
        HvlFunctionParameter createInput(HvlFunction function);

        /**
         * Further inputs in ascending order of their tags, named by tag (true) or only by position
         * (false).
         */
        HvlFunctionParameter createInputs(Map<String, HvlFunction> inputs, boolean tagged);

        HvlFunctionParameter createJson(JSONObject json, boolean bound);

        /** HVL text, unchanged. */
        HvlFunctionParameter createRaw(String text, boolean bound);
    }

    /** Gives access to the factory. */
    final class FactoryInstance
    {
        private static final Factory FACTORY = new FunctionParameterFactory();

        private FactoryInstance()
        {
        }

        public static Factory getFactory()
        {
            return FACTORY;
        }
    }
}
