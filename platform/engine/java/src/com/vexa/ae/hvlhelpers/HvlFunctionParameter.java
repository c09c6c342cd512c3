package com.vexa.ae.hvlhelpers;

import com.vexa.ae.hvlhelpers.impl.FunctionParameterFactory;
import com.zor.json.java.JSONObject;
import java.util.List;
import java.util.Map;

/** One parameter of a function that is composed place by place. */
public interface HvlFunctionParameter
{
    /**
     * Makes parameters. The last argument of the value kinds tells whether the value is bound to a
     * name by a definition of its own (true) or stands inside the call (false). A null value leaves
     * its place open.
     */
    interface Factory
    {
        /** A list of containers; null elements are left out. */
        HvlFunctionParameter createContainers(List<HvlContainer> containers, boolean bound);

        HvlFunctionParameter createExpression(HvlExpression expression, boolean bound);

        /** The function whose records are piped in; it takes no place, and null means none. */
        HvlFunctionParameter createInput(HvlFunction function);

        /**
         * Further inputs, in ascending order of tag, named by tag (true) or by place alone (false).
         */
        HvlFunctionParameter createInputs(Map<String, HvlFunction> inputs, boolean tagged);

        HvlFunctionParameter createJson(JSONObject json, boolean bound);

        /** HVL text that is taken as it is. */
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
