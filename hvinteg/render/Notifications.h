#pragma once

#include "render/ResultContext.h"

/// Shows the messages of a result object, a borrowed Java object, in the host's output. Skips
/// messages without a text. Throws JNIException.
void showNotificationsOf(ResultContext& context, jobject result);
