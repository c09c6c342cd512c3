#pragma once

/// JNI names of the Java classes behind the wrappers.
namespace JavaClassNames {
inline constexpr const char* String = "java/lang/String";
inline constexpr const char* JSONObject = "com/zor/json/java/JSONObject";
inline constexpr const char* JSONArray = "com/zor/json/java/JSONArray";
inline constexpr const char* JSONImage = "com/zor/json/java/JSONImage";
inline constexpr const char* Expression = "com/vexa/ae/hvlhelpers/HvlExpression";
inline constexpr const char* LambdaSignature =
    "com/vexa/ae/hvlhelpers/HvlExpression$LambdaSignature";
inline constexpr const char* SimpleTypes = "com/vexa/ae/hvlhelpers/HvlExpression$SimpleTypes";
inline constexpr const char* Clause = "com/vexa/ae/hvlhelpers/impl/HvlExpressionConditional$Clause";
inline constexpr const char* Type = "com/vexa/ae/hvlhelpers/HvlType";
inline constexpr const char* TypeSimple = "com/vexa/ae/hvlhelpers/HvlTypeSimple";
inline constexpr const char* TypeList = "com/vexa/ae/hvlhelpers/HvlTypeList";
inline constexpr const char* TypeTuple = "com/vexa/ae/hvlhelpers/HvlTypeTuple";
inline constexpr const char* Program = "com/vexa/ae/hvlhelpers/HvlProgram";
inline constexpr const char* Helpers = "com/vexa/ae/hvlhelpers/HvlHelpers";
inline constexpr const char* Parameter = "com/vexa/ae/hvlhelpers/HvlFunctionParameter";
inline constexpr const char* ParameterFactory =
    "com/vexa/ae/hvlhelpers/HvlFunctionParameter$Factory";
inline constexpr const char* TargetMap = "com/vexa/utilities/targetpredictormap/TargetPredictorMap";
inline constexpr const char* ParameterFactoryInstance =
    "com/vexa/ae/hvlhelpers/HvlFunctionParameter$FactoryInstance";
} // namespace JavaClassNames
