#pragma once

#include "logging/FunctionLog.h"

/// Records a metric event of this component. A failure is logged under the caller's name and otherwise ignored.
void RecordMetricsEvent(const FunctionLog& log, const char* name);
