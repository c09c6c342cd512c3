#pragma once

#include <string>

namespace TemporalTest {

/// Has a document validated against a schema, a path, when the test program ends: one process a
/// schema is much faster than one a document. `name` is that of the document in messages. A
/// document that is not valid fails the program.
void expectValid(const std::string& schema, const std::string& name, const std::string& text);

} // namespace TemporalTest
