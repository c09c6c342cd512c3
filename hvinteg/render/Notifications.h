#pragma once

#include "render/ResultContext.h"

/// Shows the messages that come with a result object, a borrowed Java object, in the host's output.
/// A message without a text is left out. Throws JNIException.
void showNotificationsOf(ResultContext& context, jobject result);
