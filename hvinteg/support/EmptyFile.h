#pragma once

class ExtNameStr;

/// Creates an empty file, which reserves its name. One that cannot be created is nobody's fault
/// yet: it shows when somebody writes it.
void createEmpty(const ExtNameStr& path);
