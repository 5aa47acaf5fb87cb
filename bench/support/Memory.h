#pragma once

/// Bytes that the process has allocated and not given back.
double AllocatedBytes();

/// Bytes of the process that are in memory, code included.
double ResidentBytes();
