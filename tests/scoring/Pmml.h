#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "IMCScoreComputer.h"
#include "MCScorerFactory.h"
#include "MCSettings.h"

/// The fields that every model of these tests may use.
inline const std::string kFields =
    "<DataField name='x' optype='continuous' dataType='double'/>"
    "<DataField name='y' optype='continuous' dataType='double'/>"
    "<DataField name='s' optype='categorical' dataType='string'/>"
    "<DataField name='flag' optype='categorical' dataType='boolean'/>"
    "<DataField name='day' optype='continuous' dataType='date'/>"
    "<DataField name='moment' optype='continuous' dataType='dateTime'/>";

inline std::string pmml(const std::string& transformations, const std::string& fields = kFields)
{
    return "<PMML version='4.4' xmlns='http://www.dmg.org/PMML-4_4'><Header/><DataDictionary>" +
           fields + "</DataDictionary><TransformationDictionary>" + transformations +
           "</TransformationDictionary></PMML>";
}

inline std::string derived(const std::string& expression, const std::string& type = "double",
                           const std::string& name = "r")
{
    return "<DerivedField name='" + name + "' optype='continuous' dataType='" + type + "'>" +
           expression + "</DerivedField>";
}

inline std::string field(const std::string& name)
{
    return "<FieldRef field='" + name + "'/>";
}

inline std::string constant(const std::string& value, const std::string& attributes = "")
{
    return "<Constant " + attributes + ">" + value + "</Constant>";
}

/// `attributes` may follow the name of the function: "if' mapMissingTo='1".
inline std::string call(const std::string& function, const std::string& arguments)
{
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

/// Null, and what is wrong, for a model that is refused.
inline std::unique_ptr<IMCScoreComputer>
read(const std::string& model, std::string* fault = nullptr, MCSettings settings = {})
{
    std::istringstream stream(model);
    MCScorerFactory factory;
    std::unique_ptr<IMCScoreComputer> computer(factory.CreateMCScoringObject(settings, stream));
    if (fault)
        *fault = factory.GetStatus().GetMessage();
    return computer;
}
