#pragma once

/// Parts of JNI signatures, as literals that concatenate. Only for the .cpp files of this folder.

#define SIG_STRING "Ljava/lang/String;"
#define SIG_LIST "Ljava/util/List;"
#define SIG_MAP "Ljava/util/Map;"
#define SIG_SET "Ljava/util/Set;"
#define SIG_JSON_OBJECT "Lcom/zor/json/java/JSONObject;"
#define SIG_PROGRAM "Lcom/vexa/ae/hvlhelpers/HvlProgram;"
#define SIG_FUNCTION "Lcom/vexa/ae/hvlhelpers/HvlFunction;"
#define SIG_PARAMETER "Lcom/vexa/ae/hvlhelpers/HvlFunctionParameter;"
#define SIG_EXPRESSION "Lcom/vexa/ae/hvlhelpers/HvlExpression;"
#define SIG_FIELD_DERIVE "Lcom/vexa/ae/hvlhelpers/HvlFieldDerive;"
#define SIG_CONTAINER "Lcom/vexa/ae/hvlhelpers/HvlContainer;"
