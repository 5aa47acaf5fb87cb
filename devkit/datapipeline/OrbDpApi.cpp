#include "devkit/datapipeline/EventRecorder.h"
#include "devkit/faults/Edge.h"

using namespace DataPipeline;

namespace DataPipeline::Api
{

static int32_t OrbDpApi_MetricsRecordEvent(int32_t code, const char* name)
{
    return EventRecorder::Instance().Record(code, name, nullptr, false);
}

static int32_t OrbDpApi_MetricsRecordMajorEvent(int32_t code, const char* name, const wchar_t* payload)
{
    return EventRecorder::Instance().Record(code, name, payload, true);
}

} // namespace DataPipeline::Api

namespace
{

struct Library : SuiteFaults::PlainLibrary
{
    static SuiteFaults::FaultInjector& Faults()
    {
        static SuiteFaults::FaultInjector faults({NL_ORB_DP_API_FUNCTIONS(SUITE_FAULT_NAME)});
        return faults;
    }
};

enum Number : std::size_t
{
    NL_ORB_DP_API_FUNCTIONS(SUITE_FAULT_NUMBER)
};

} // namespace

// NOLINTBEGIN(readability-identifier-naming)
#define ARGUMENTS_OrbDpApi_MetricsRecordEvent (code, name)
#define ARGUMENTS_OrbDpApi_MetricsRecordMajorEvent (code, name, payload)
// NOLINTEND(readability-identifier-naming)

NL_ORB_DP_API_FUNCTIONS(SUITE_FAULT_EXPORT)

void OrbDpControl_Events(OrbDpEventVisitor visitor, void* context)
{
    EventRecorder::Instance().Visit(visitor, context);
}

void OrbDpControl_SetFault(int32_t code, uint32_t count)
{
    Library::Faults().Clear();
    if (code != 0)
        Library::Faults().Add({nullptr, nullptr, static_cast<uint32_t>(code), 1, count, false});
}
