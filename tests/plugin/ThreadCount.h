#pragma once

/// How many threads this process has.
int ThreadCount();
