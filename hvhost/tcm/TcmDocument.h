#pragma once

#include <memory>

#include "OutputTree.h"

class HostSession;
struct TcmResult;

/// Renders the parts of a result as output of the host, by way of a result document. Throws
/// CommandFault as Rendering.
std::shared_ptr<const OutputHeading> tcmOutput(HostSession& session, const TcmResult& result);
