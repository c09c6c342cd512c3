#pragma once

class ExtNameStr;

/// Creates an empty file to reserve its name. Ignores failures: the later write reports them.
void createEmpty(const ExtNameStr& path);
