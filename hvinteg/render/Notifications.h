#pragma once

#include "render/ResultContext.h"

/// Tells the messages that come with a result object, a borrowed Java object, in the host's output.
/// Those that cannot be read are left out.
void showNotificationsOf(ResultContext& context, jobject result);
