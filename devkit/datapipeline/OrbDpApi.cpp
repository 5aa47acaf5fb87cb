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
        static SuiteFaults::FaultInjector s_faults({NL_ORB_DP_API_FUNCTIONS(SUITE_FAULT_NAME)});
        return s_faults;
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

bool OrbDpControl_SetFault(const char* function, int32_t code, uint32_t count)
{
    auto& faults = Library::Faults();
    if (!function)
        faults.Clear();
    else if (code == 0)
        return faults.Remove(function, nullptr);
    return code == 0 || faults.Add({function, nullptr, static_cast<uint32_t>(code), 1, count, false});
}

void OrbDpControl_Faults(SuiteFaultVisitor visitor, void* context)
{
    Library::Faults().Visit(visitor, context);
}
