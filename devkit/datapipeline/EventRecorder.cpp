#include "devkit/datapipeline/EventRecorder.h"

namespace DataPipeline
{

EventRecorder& EventRecorder::Instance()
{
    static EventRecorder s_recorder;
    return s_recorder;
}

int32_t EventRecorder::Record(int32_t code, const char* name, const wchar_t* payload, bool major)
{
    constexpr int32_t kInvalidArgument = 87;
    const std::lock_guard lock(m_mutex);
    if (!name)
        return kInvalidArgument;
    m_events.push_back({code, name, payload ? std::optional<std::wstring>(payload) : std::nullopt, major});
    return 0;
}

void EventRecorder::Visit(OrbDpEventVisitor visitor, void* context)
{
    std::unique_lock lock(m_mutex);
    const std::vector<Event> events = m_events;
    lock.unlock();
    for (const Event& event : events)
    {
        const OrbDpEvent view{event.code, event.name.c_str(), event.payload ? event.payload->c_str() : nullptr,
                              event.major};
        visitor(context, &view);
    }
}

} // namespace DataPipeline
