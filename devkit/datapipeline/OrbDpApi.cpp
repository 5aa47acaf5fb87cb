#include "devkit/datapipeline/EventRecorder.h"

using DataPipeline::EventRecorder;

int32_t OrbDpApi_MetricsRecordEvent(int32_t code, const char* name)
{
    return EventRecorder::Instance().Record(code, name, nullptr, false);
}

int32_t OrbDpApi_MetricsRecordMajorEvent(int32_t code, const char* name, const wchar_t* payload)
{
    return EventRecorder::Instance().Record(code, name, payload, true);
}

void OrbDpControl_Events(OrbDpEventVisitor visitor, void* context)
{
    EventRecorder::Instance().Visit(visitor, context);
}

void OrbDpControl_SetFault(int32_t code, uint32_t count)
{
    EventRecorder::Instance().SetFault(code, count);
}
